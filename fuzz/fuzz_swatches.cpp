// SPDX-License-Identifier: MIT
// The importer of swatches over any bytes, and what becomes of what it read when that is written and read again.
#include "fuzz/fuzzcheck.h"
#include "fuzz/memoryfile.h"
#include "taviapp/iso12642.h"
#include "taviapp/iso12642text_p.h"
#include "tavilib/calcheck.h"
#include "tavilib/tavilist.h"
#include "tavilib/tavipacket.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string_view>

namespace {

TAVICOMBOCOLOUR_CC readBytes(std::string_view bytes, CgatsReport &report)
{
    static const MemoryFile memory("fuzz_swatches");
    memory.fill(bytes);
    return TAVICOMBOCOLOUR_CC(SwatchImporter::import(memory.path(), SWATCHTYPE_CGATS, 0, report));
}

void checkSwatches(const TAVICOMBOCOLOUR_CC &swatches, const CgatsReport &report)
{
    FUZZ_CHECK(report.refused == (swatches.count() == 0));
    FUZZ_CHECK(report.refused || (report.rows == swatches.count() && report.rows_dropped == 0));
    FUZZ_CHECK(report.refused || report.rows_without_colour == 0);
    for (const TAVICOMBOCOLOUR *patch = swatches.head(); patch; patch = NextInList(patch)) {
        FUZZ_CHECK(patch->name);
        FUZZ_CHECK(patch->flags & COMBOCOLOUR_FLAG_LAB);
        FUZZ_CHECK(std::isfinite(patch->L) && std::isfinite(patch->a) && std::isfinite(patch->b));
        FUZZ_CHECK(patch->device_count <= 8);
        for (const double tolerance :
             {DECODE_DELTA_E_TOLERANCE(patch), DECODE_DELTA_H_TOLERANCE(patch), DECODE_DELTA_C_TOLERANCE(patch)})
            FUZZ_CHECK(tolerance >= 0.0);
    }
}

bool isSame(const float *a, const float *b)
{
    return std::equal(a, a + 4, b);
}

/// What control characters of a name become when it is written.
char written(char c)
{
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7f ? ' ' : c;
}

void checkName(std::string_view name, std::string_view back)
{
    // A name of the longest length may grow by its quotes and be cut.
    if (name.size() < 8000) {
        FUZZ_CHECK(name.size() == back.size());
        FUZZ_CHECK(
            std::equal(name.begin(), name.end(), back.begin(), [](char a, char b) { return written(a) == b; }));
    }
}

void checkSame(const TAVICOMBOCOLOUR &patch, const TAVICOMBOCOLOUR &back)
{
    checkName(patch.name, back.name);
    FUZZ_CHECK(patch.L == back.L && patch.a == back.a && patch.b == back.b);
    FUZZ_CHECK(patch.flags == back.flags && patch.percent == back.percent && patch.rgb == back.rgb);
    FUZZ_CHECK(patch.device_model == back.device_model && patch.device_count == back.device_count);
    FUZZ_CHECK(isSame(patch.device, back.device) && isSame(patch.device_extra, back.device_extra));
    FUZZ_CHECK(patch.tolerances == back.tolerances && patch.tolerances_more == back.tolerances_more);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    CgatsReport report;
    const TAVICOMBOCOLOUR_CC swatches = readBytes({reinterpret_cast<const char *>(data), size}, report);
    checkSwatches(swatches, report);
    if (report.refused)
        return 0;

    std::string error;
    const std::string text = iso12642Text(swatches.head(), nullptr, error);
    FUZZ_CHECK(error.empty());
    CgatsReport second_report;
    const TAVICOMBOCOLOUR_CC back = readBytes(text, second_report);
    checkSwatches(back, second_report);
    FUZZ_CHECK(second_report.assumptions.empty());
    FUZZ_CHECK(back.count() == swatches.count());
    const TAVICOMBOCOLOUR *other = back.head();
    for (const TAVICOMBOCOLOUR *patch = swatches.head(); patch; patch = NextInList(patch)) {
        checkSame(*patch, *other);
        other = NextInList(other);
    }
    FUZZ_CHECK(iso12642Text(back.head(), nullptr, error) == text);
    return 0;
}

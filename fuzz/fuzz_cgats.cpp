// SPDX-License-Identifier: MIT
// The CGATS reader and the importer of patches over any bytes.
#include "fuzz/fuzzcheck.h"
#include "fuzz/memoryfile.h"
#include "taviapp/cgatsreader.h"
#include "taviapp/iso12642.h"
#include "tavilib/tavilist.h"
#include "tavilib/tavipacket.h"

#include <cmath>
#include <cstdint>
#include <string>

namespace {

void checkReport(const CgatsReport &report, size_t lines)
{
    FUZZ_CHECK(report.refused == !report.refusal_reason.empty());
    FUZZ_CHECK(report.refusal_reason.find_first_of("\r\n") == std::string::npos);
    FUZZ_CHECK(report.refusal_line <= lines);
    for (const auto *notes : {&report.assumptions, &report.doubts}) {
        FUZZ_CHECK(notes->size() <= CgatsReport::maximum_notes);
        for (const CgatsNote &note : *notes) {
            FUZZ_CHECK(note.line <= lines && !note.text.empty());
            FUZZ_CHECK(note.text.find_first_of("\r\n") == std::string::npos);
        }
    }
}

void checkTable(const CgatsTable &table, size_t lines)
{
    size_t last_line = 0;
    FUZZ_CHECK(table.line() > 0 && table.line() <= lines);
    for (size_t row = 0; row < table.rowCount(); ++row) {
        FUZZ_CHECK(table.rowLine(row) > last_line && table.rowLine(row) <= lines);
        last_line = table.rowLine(row);
        for (size_t column = 0; column < table.columnCount(); ++column) {
            FUZZ_CHECK(table.cell(row, column).find_first_of("\r\n") == std::string_view::npos);
            table.cellText(row, column);
        }
    }
    FUZZ_CHECK(table.rowCount() == 0 || table.columnCount() > 0);
}

void checkPatches(const TAVICOMBOCOLOUR *patches, const CgatsReport &report)
{
    size_t count = 0;
    size_t without_colour = 0;
    for (const TAVICOMBOCOLOUR *patch = patches; patch; patch = NextInList(patch)) {
        ++count;
        FUZZ_CHECK(patch->name);
        FUZZ_CHECK(std::isfinite(patch->L) && std::isfinite(patch->a) && std::isfinite(patch->b));
        FUZZ_CHECK(patch->device_count <= 8);
        FUZZ_CHECK((patch->device_count == 0) == (patch->device_model == COMBOCOLOUR_DEVICE_NONE));
        const bool colour = patch->flags & COMBOCOLOUR_FLAG_LAB;
        without_colour += !colour;
        FUZZ_CHECK(colour == (patch->percent == 100) && colour == (patch->rgb != 0));
    }
    FUZZ_CHECK(report.refused == (patches == nullptr));
    FUZZ_CHECK(report.refused || (report.rows == count && report.rows_without_colour == without_colour));
}

/// Line feeds and carriage returns with line feeds must come to the same.
void checkOtherLineEnds(const std::string &text, const CgatsFile &file, const CgatsReport &report)
{
    if (text.find('\r') != std::string::npos || text.starts_with("\xff\xfe") || text.starts_with("\xfe\xff"))
        return;
    std::string other;
    for (const char c : text) {
        if (c == '\n')
            other += '\r';
        other += c;
    }
    CgatsReport other_report;
    const CgatsFile other_file = CgatsFile::parse(other, other_report);
    FUZZ_CHECK(other_report.refusalText() == report.refusalText());
    FUZZ_CHECK(other_report.assumptions.size() == report.assumptions.size());
    FUZZ_CHECK(other_report.doubts.size() == report.doubts.size());
    FUZZ_CHECK(other_file.tables().size() == file.tables().size());
    for (size_t i = 0; i < file.tables().size(); ++i) {
        const CgatsTable &table = file.tables()[i];
        const CgatsTable &other_table = other_file.tables()[i];
        FUZZ_CHECK(other_table.rowCount() == table.rowCount() && other_table.columnCount() == table.columnCount());
        for (size_t row = 0; row < table.rowCount(); ++row) {
            FUZZ_CHECK(other_table.rowLine(row) == table.rowLine(row));
            for (size_t column = 0; column < table.columnCount(); ++column)
                FUZZ_CHECK(other_table.cell(row, column) == table.cell(row, column));
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string text(reinterpret_cast<const char *>(data), size);
    size_t lines = 1;
    for (const char c : text)
        lines += c == '\n' || c == '\r';
    // In UTF-16 a line break may also come of two other bytes, so count generously.
    if (text.starts_with("\xff\xfe") || text.starts_with("\xfe\xff"))
        lines = size + 1;

    CgatsReport report;
    const CgatsFile file = CgatsFile::parse(text, report);
    checkReport(report, lines);
    FUZZ_CHECK(!report.refused || file.tables().empty());
    for (const CgatsTable &table : file.tables())
        checkTable(table, lines);
    checkOtherLineEnds(text, file, report);

    static const MemoryFile memory("fuzz_cgats");
    memory.fill(text);
    CgatsReport import_report;
    TAVICOMBOCOLOUR *patches = ISO12642Importer::import(memory.path(), 0, import_report);
    checkReport(import_report, lines);
    checkPatches(patches, import_report);
    TaviPacketFreeList(&patches, TAVIPACKET_COMBOCOLOUR);
    return 0;
}

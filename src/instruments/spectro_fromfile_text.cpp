// SPDX-License-Identifier: MIT
// The text readers of spectro_fromfile.h.
#include "instruments/spectro_fromfile.h"

#include "tavilib/calc.h"
#include "tavilib/tavifile.h"
#include "tavilib/tavistring.h"

#include <algorithm>
#include <atomic>
#include <charconv>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <span>

namespace {

constexpr const char *unit = "spectro_fromfile";

/// `atof` without the application's locale, in which a German "95.3" would be 95. The quick reader takes all that is
/// a plain number and nothing but one; the rest goes the way of the C library: signs, hexadecimals, words, leading
/// numbers.
double numberOf(const char *token)
{
    const char *end = token + std::strlen(token);
    double number = 0.0;
    const auto [stopped, error] = std::from_chars(token, end, number);
    if (error == std::errc() && stopped == end)
        return number;
    static const locale_t c_locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return strtod_l(token, nullptr, c_locale);
}

/// A measurement file, line by line from its top.
class MeasurementFile
{
public:
    explicit MeasurementFile(void *handle) : file_(static_cast<FILE *>(handle)) { Tavi_rewind(file_); }

    /// False at the end of the file.
    bool readLine() { return GetLineEOFOKLevel2(file_, line_, sizeof line_) == 0; }

    /// The first numbers of the line, as many as asked for; false if it has fewer columns. Cuts the line up.
    bool takeNumbers(std::span<double> numbers)
    {
        char *rest = nullptr;
        char *text = line_;
        for (double &number : numbers) {
            const char *token = Tavi_strtok(text, " \t\n\r", &rest);
            if (!token)
                return false;
            number = numberOf(token);
            text = nullptr;
        }
        return true;
    }

private:
    FILE *file_;
    char line_[1024];
};

/// The words that a read has for the user.
class Messages
{
public:
    Messages(const char *function, InstrumentMessageCallback message, void *context)
        : function_(function), message_(message), context_(context)
    {}

    void ready() const { message_(context_, 0, unit, nullptr, "File importer ready"); }
    void processed(int count) const
    {
        message_(context_, 0, unit, nullptr, "File importer: processed %d measurements", count);
    }
    void cancelled() const { message_(context_, 0, unit, function_, "Reading cancelled by user"); }
    void measure(unsigned long separation, unsigned long patch) const
    {
        message_(context_, 0, unit, function_, "Measure %c%lu", static_cast<int>('A' + separation), patch + 1);
    }

private:
    const char *function_;
    InstrumentMessageCallback message_;
    void *context_;
};

/// The words that the application writes while a read runs.
template <typename Word>
Word load(Word *word)
{
    return std::atomic_ref<Word>(*word).load(std::memory_order_acquire);
}

enum class ColumnOrder { CMYK, KCMY };
enum class Channel { K, C, M, Y, None };

/// Takes the four densities of a line; false if it has fewer.
bool takeDensities(MeasurementFile &file, ColumnOrder order, PATCHDENSITY &patch)
{
    double numbers[4];
    if (!file.takeNumbers(numbers))
        return false;
    if (order == ColumnOrder::KCMY)
        std::rotate(std::begin(numbers), std::begin(numbers) + 1, std::end(numbers));
    patch.density_c = numbers[0];
    patch.density_m = numbers[1];
    patch.density_y = numbers[2];
    patch.density_k = numbers[3];
    return true;
}

double densityOf(const PATCHDENSITY &patch, Channel channel)
{
    switch (channel) {
    case Channel::K:
        return patch.density_k;
    case Channel::C:
        return patch.density_c;
    case Channel::M:
        return patch.density_m;
    case Channel::Y:
        return patch.density_y;
    case Channel::None:
        break;
    }
    return 0.0;
}

// Two tables that must not become one. They differ on 4 and 6 and past their ends, because what they are asked by
// differs: the first by the separation that the user chose in the group, where only four have a filter of their own
// and black stands for the rest; the second by the ink of a separation in the linearisation target, where orange is
// read through magenta and green through cyan, and an ink that nothing is known of has no density.
constexpr Channel spot_channels[] = {Channel::K, Channel::C, Channel::M, Channel::Y,
                                     Channel::K, Channel::C, Channel::K, Channel::M};
constexpr Channel linearisation_channels[] = {Channel::K, Channel::C, Channel::M, Channel::Y,
                                              Channel::M, Channel::C, Channel::C, Channel::M};

Channel select(std::span<const Channel> channels, SPECTROSEPTYPE separation, Channel otherwise)
{
    const auto index = static_cast<uint32_t>(separation);
    return index < channels.size() ? channels[index] : otherwise;
}

int readSpotDensities(ColumnOrder order, void *handle, int *abort_flag, SPECTROSEPTYPE *sep_type,
                      InstrumentDensityCallback density, void *density_context, InstrumentMessageCallback message,
                      void *message_context)
{
    const Messages messages("SpectrophotometerReadSpotDensities", message, message_context);
    MeasurementFile file(handle);
    PATCHDENSITY patch = {};
    messages.ready();
    int count = 0;
    while (file.readLine()) {
        if (load(abort_flag)) {
            messages.cancelled();
            return 0;
        }
        if (!takeDensities(file, order, patch))
            continue;
        patch.sep_type = load(sep_type);
        patch.patch_index = 0;
        patch.density = densityOf(patch, select(spot_channels, patch.sep_type, Channel::K));
        density(density_context, &patch);
        ++count;
    }
    messages.processed(count);
    return 0;
}

int readLinearisation(ColumnOrder order, void *handle, int *abort_flag, unsigned long steps, const DENSITYLUT *lut,
                      unsigned long first_separation, long first_patch, InstrumentDensityCallback density,
                      void *density_context, InstrumentMessageCallback message, void *message_context)
{
    if (!lut || (!lut->bands && lut->separation_count > 0))
        return -1;
    const Messages messages("SpectrophotometerReadLinearisation", message, message_context);
    MeasurementFile file(handle);
    PATCHDENSITY patch = {};
    int count = 0;
    auto first = static_cast<unsigned long>(std::max(first_patch, 0L));
    for (unsigned long separation = first_separation; separation < lut->separation_count; ++separation, first = 0) {
        patch.sep_type = TaviBandTypeToSpectroSepType(lut->bands[separation].band_type);
        patch.sep_index = static_cast<uint32_t>(separation);
        for (unsigned long index = first; index < steps; ++index) {
            messages.measure(separation, index);
            do {
                if (!file.readLine()) {
                    messages.processed(count);
                    return count;
                }
                if (load(abort_flag)) {
                    messages.cancelled();
                    return 0;
                }
            } while (!takeDensities(file, order, patch));
            patch.patch_index = static_cast<int32_t>(index);
            patch.density = densityOf(patch, select(linearisation_channels, patch.sep_type, Channel::None));
            density(density_context, &patch);
            ++count;
        }
    }
    return count;
}

int readLab(void *handle, int *abort_flag, InstrumentLabCallback lab, void *lab_context,
            InstrumentMessageCallback message, void *message_context)
{
    const Messages messages("SpectrophotometerReadSpotLab", message, message_context);
    MeasurementFile file(handle);
    messages.ready();
    int count = 0;
    while (file.readLine()) {
        if (load(abort_flag)) {
            messages.cancelled();
            return 0;
        }
        double numbers[3];
        if (!file.takeNumbers(numbers))
            continue;
        lab(lab_context, numbers[0], numbers[1], numbers[2]);
        ++count;
    }
    lab(lab_context, -1.0, 0.0, 0.0);
    messages.processed(count);
    return 0;
}

} // namespace

int spectro_fromfile_cmykorder_SpectrophotometerReadSpotDensities(
    void *handle, int *abort_flag, DENSITYSTANDARD, SPECTROSEPTYPE *sep_type, InstrumentDensityCallback density,
    void *density_context, InstrumentMessageCallback message, void *message_context)
{
    return readSpotDensities(ColumnOrder::CMYK, handle, abort_flag, sep_type, density, density_context, message,
                             message_context);
}

int spectro_fromfile_kcmyorder_SpectrophotometerReadSpotDensities(
    void *handle, int *abort_flag, DENSITYSTANDARD, SPECTROSEPTYPE *sep_type, InstrumentDensityCallback density,
    void *density_context, InstrumentMessageCallback message, void *message_context)
{
    return readSpotDensities(ColumnOrder::KCMY, handle, abort_flag, sep_type, density, density_context, message,
                             message_context);
}

int spectro_fromfile_cmykorder_SpectrophotometerReadLinearisation(
    void *handle, int *abort_flag, DENSITYSTANDARD, unsigned long steps, DENSITYLUT *lut,
    unsigned long first_separation, long first_patch, InstrumentDensityCallback density, void *density_context,
    InstrumentMessageCallback message, void *message_context)
{
    return readLinearisation(ColumnOrder::CMYK, handle, abort_flag, steps, lut, first_separation, first_patch,
                             density, density_context, message, message_context);
}

int spectro_fromfile_kcmyorder_SpectrophotometerReadLinearisation(
    void *handle, int *abort_flag, DENSITYSTANDARD, unsigned long steps, DENSITYLUT *lut,
    unsigned long first_separation, long first_patch, InstrumentDensityCallback density, void *density_context,
    InstrumentMessageCallback message, void *message_context)
{
    return readLinearisation(ColumnOrder::KCMY, handle, abort_flag, steps, lut, first_separation, first_patch,
                             density, density_context, message, message_context);
}

int spectro_fromfile_SpectrophotometerReadSpotLab(void *handle, int *abort_flag, InstrumentLabCallback lab,
                                                  void *lab_context, InstrumentMessageCallback message,
                                                  void *message_context)
{
    return readLab(handle, abort_flag, lab, lab_context, message, message_context);
}

int spectro_fromfile_SpectrophotometerReadComboColourChart(void *handle, int *abort_flag, TAVICOMBOCOLOUR *,
                                                           unsigned long, unsigned long, InstrumentLabCallback lab,
                                                           void *lab_context, InstrumentMessageCallback message,
                                                           void *message_context)
{
    return readLab(handle, abort_flag, lab, lab_context, message, message_context);
}

// SPDX-License-Identifier: MIT
#include "taviapp/iso12642.h"
#include "tests/support/tavitest.h"
#include "tests/taviapp/patchtext.h"

#include <QDir>

#include <cmath>
#include <lcms2.h>
#include <memory>

/// The importer against the table reader of Little CMS, on every file of the corpus and of the public folders: where
/// both read a file they read the same, and where they part is written down, so that a change on either side shows.
class TestIso12642Crosscheck : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void verdict_data();
    void verdict();
};

namespace {

using Handle = std::unique_ptr<void, void (*)(cmsHANDLE)>;

/// What the other reader has for one field of one row; nothing if it has no such column.
class OtherTable
{
public:
    explicit OtherTable(cmsHANDLE handle) : handle_(handle)
    {
        char **names = nullptr;
        const int count = cmsIT8EnumDataFormat(handle, &names);
        for (int i = 0; names && i < count; ++i)
            fields_.append(QString(names[i]).toUpper());
    }

    int rows() const { return int(cmsIT8GetPropertyDbl(handle_, "NUMBER_OF_SETS")); }
    bool has(const QStringList &names) const
    {
        return std::all_of(names.begin(), names.end(),
                           [this](const QString &name) { return fields_.contains(name); });
    }
    double value(int row, const QString &name) const
    {
        return cmsIT8GetDataRowColDbl(handle_, row, fields_.indexOf(name));
    }
    QString text(int row, const QString &name) const
    {
        return QString::fromUtf8(cmsIT8GetDataRowCol(handle_, row, fields_.indexOf(name)));
    }

private:
    cmsHANDLE handle_;
    QStringList fields_;
};

const QStringList lab_names = {"LAB_L", "LAB_A", "LAB_B"};
const QStringList xyz_names = {"XYZ_X", "XYZ_Y", "XYZ_Z"};

QStringList deviceNames(const TAVICOMBOCOLOUR &patch)
{
    switch (patch.device_model) {
    case COMBOCOLOUR_DEVICE_CMYK:
        return {"CMYK_C", "CMYK_M", "CMYK_Y", "CMYK_K"};
    case COMBOCOLOUR_DEVICE_CMY:
        return {"CMY_C", "CMY_M", "CMY_Y"};
    case COMBOCOLOUR_DEVICE_RGB:
        return {"RGB_R", "RGB_G", "RGB_B"};
    case COMBOCOLOUR_DEVICE_GRAY:
        return {"GRAY"};
    case COMBOCOLOUR_DEVICE_NCLR: {
        QStringList names;
        for (uint32_t ink = 1; ink <= patch.device_count; ++ink)
            names.append(QString("%1CLR_%2").arg(patch.device_count).arg(ink));
        return names;
    }
    default:
        return {};
    }
}

bool same(double a, double b)
{
    return std::fabs(a - b) <= 1e-9 * std::max(1.0, std::fabs(b));
}

/// Empty if the patch is the row of the other table.
QString difference(const TAVICOMBOCOLOUR &patch, const OtherTable &other, int row)
{
    const bool lab = other.has(lab_names);
    if (lab || other.has(xyz_names)) {
        double value[3] = {};
        for (int i = 0; i < 3; ++i)
            value[i] = other.value(row, (lab ? lab_names : xyz_names).at(i));
        if (!lab) {
            const cmsCIEXYZ xyz = {value[0] / 100, value[1] / 100, value[2] / 100};
            cmsCIELab converted = {};
            cmsXYZ2Lab(nullptr, &converted, &xyz);
            value[0] = converted.L;
            value[1] = converted.a;
            value[2] = converted.b;
        }
        if (!(patch.flags & COMBOCOLOUR_FLAG_LAB))
            return QString("row %1 has a colour there").arg(row + 1);
        if (!same(patch.L, value[0]) || !same(patch.a, value[1]) || !same(patch.b, value[2]))
            return QString("row %1 is %2 %3 %4 there").arg(row + 1).arg(value[0]).arg(value[1]).arg(value[2]);
    }
    const QStringList device = deviceNames(patch);
    for (int i = 0; i < device.size() && other.has(device); ++i) {
        const float value = i < 4 ? patch.device[i] : patch.device_extra[i - 4];
        if (value != static_cast<float>(other.value(row, device.at(i))))
            return QString("row %1 has other device values there").arg(row + 1);
    }
    for (const char *name : {"SAMPLE_NAME", "SAMPLE_LOC", "SAMPLE_ID"}) {
        if (!other.has({name}))
            continue;
        if (!other.text(row, name).isEmpty() && other.text(row, name) != QString::fromUtf8(patch.name))
            return QString("row %1 is named %2 there").arg(row + 1).arg(other.text(row, name));
        break;
    }
    return QString();
}

/// "same", or how the two part.
QString compare(const QString &path)
{
    CgatsReport report;
    const TAVICOMBOCOLOUR_CC patches(ISO12642Importer::import(path.toStdString(), 0, report));
    const Handle handle(cmsIT8LoadFromFile(nullptr, qPrintable(path)), cmsIT8Free);
    if (!handle)
        return report.refused ? "both refuse" : "refused there";
    if (report.refused)
        return "refused here";
    for (cmsUInt32Number i = 0; i < cmsIT8TableCount(handle.get()); ++i) {
        cmsIT8SetTable(handle.get(), i);
        const OtherTable other(handle.get());
        const bool colour = other.has(lab_names) || other.has(xyz_names);
        const bool device = !deviceNames(*patches.head()).isEmpty() && other.has(deviceNames(*patches.head()));
        if (!colour && (report.rows_without_colour < patches.count() || !device))
            continue;
        if (other.rows() != int(patches.count()))
            return QString("%1 rows there").arg(other.rows());
        int row = 0;
        for (const TAVICOMBOCOLOUR *patch = patches.head(); patch; patch = NextInList(patch)) {
            const QString found = difference(*patch, other, row++);
            if (!found.isEmpty())
                return found;
        }
        return "same";
    }
    return "no columns there";
}

} // namespace

void TestIso12642Crosscheck::verdict_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("expected");

    // "There" is Little CMS 2.14, the reference platform's. Where it reads other numbers, the file says what is
    // right.
    const QHash<QString, QString> parted = {
        {"bare_four_columns.txt", "both refuse"},
        {"bare_lab.txt", "refused there"},
        {"bare_lab_without_last_line_end.txt", "refused there"},
        {"bare_names_and_lab.txt", "refused there"},
        {"bare_no_lab.txt", "both refuse"},
        {"bare_numbers_and_lab.txt", "refused there"},
        {"bare_seven_columns.txt", "both refuse"},
        {"bare_with_header_line.txt", "refused there"},
        {"blank.txt", "refused here"},
        {"bom_utf16_be.txt", "refused there"},
        {"bom_utf16_le.txt", "refused there"},
        {"bom_utf8.txt", "refused there"},
        {"decimal_comma.txt", "row 1 is 0 0 -2 there"},
        {"decimal_comma_and_point.txt", "refused here"},
        {"empty.txt", "both refuse"},
        {"fields_missing.txt", "refused there"},
        {"fields_wrong.txt", "refused there"},
        {"format_block_not_closed.txt", "refused there"},
        {"format_block_on_one_line.txt", "refused there"},
        {"ids_only.txt", "refused here"},
        {"include.txt", "refused there"},
        {"names_latin1.txt", "row 1 is named Wei� there"},
        {"names_utf8.txt", "refused there"},
        {"names_with_stars.txt", "no columns there"},
        {"no_format_block.txt", "no columns there"},
        {"no_rows.txt", "both refuse"},
        {"no_values.txt", "row 2 has a colour there"},
        {"plus_and_exponent.txt", "row 3 is 16 -5e+10 0.5 there"},
        {"prose.txt", "refused here"},
        {"quotes_doubled.txt", "refused there"},
        {"quotes_missing.txt", "refused there"},
        {"row_long.txt", "refused there"},
        {"row_short.txt", "3 rows there"},
        {"rows_all_long.txt", "both refuse"},
        {"rows_over_lines_uneven.txt", "both refuse"},
        {"sample_name.txt", "row 2 is named corpus there"},
        {"sets_missing.txt", "refused there"},
        {"sets_wrong.txt", "refused there"},
        {"spectral_only.txt", "refused here"},
        {"tabs_against_blanks.txt", "3 rows there"},
        {"tabs_empty_cell.txt", "row 2 is -37.5 -50 3 there"},
        {"tabs_names_with_blanks.txt", "refused there"},
        {"truncated_between_rows.txt", "refused there"},
        {"truncated_in_end_data.txt", "refused there"},
        {"truncated_in_header.txt", "both refuse"},
        {"truncated_in_last_value.txt", "3 rows there"},
        {"truncated_in_row.txt", "refused there"},
        {"utf16_without_bom.txt", "both refuse"},
        {"zero_byte.txt", "both refuse"},
        {"ColorChecker.ti2", "refused there"},
        {"FograStrip3.ti1", "refused there"},
    };
    const QDir folders[] = {QDir(dataFile("cgats"), "*.txt", QDir::Name, QDir::Files),
                            QDir("/usr/share/color/icc", "*.ti3", QDir::Name, QDir::Files),
                            QDir("/usr/share/color/argyll/ref", "*.ti1 *.ti2 *.cie", QDir::Name, QDir::Files)};
    QStringList unused = parted.keys();
    for (const QDir &folder : folders) {
        if (folder.count() == 0)
            QFAIL(qPrintable("nothing to compare in " + folder.path()));
        for (const QString &name : folder.entryList()) {
            QTest::newRow(qPrintable(name)) << folder.filePath(name) << parted.value(name, "same");
            unused.removeAll(name);
        }
    }
    if (!unused.isEmpty())
        QFAIL(qPrintable("files that are not there: " + unused.join(' ')));
}

void TestIso12642Crosscheck::verdict()
{
    QFETCH(QString, path);
    QFETCH(QString, expected);
    QCOMPARE(compare(path), expected);
}

TAVI_TEST_MAIN(TestIso12642Crosscheck)
#include "tst_iso12642_crosscheck.moc"

#include "platform/runtime/Format.h"

#include "RowFile.h"
#include "RuntimeRows.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Dates.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostLocale.h"
#include "platform/runtime/QStringPrinter.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace Runtime;

namespace {

using RowFile::In;
using RowFile::Named;

class Formats : public RowFile::RowTest<>
{
};

TEST_P(Formats, ShowWhatPupilsSee)
{
    EXPECT_EQ(
        Format(RuntimeRows::Value(row(), "value"), row().text("format")), row().text("shown"));
}

INSTANTIATE_TEST_SUITE_P(
    NumberPatterns, Formats, In("platform/runtime/format/numberPatterns.rows"), Named());
INSTANTIATE_TEST_SUITE_P(
    NamedNumberFormats, Formats, In("platform/runtime/format/namedNumberFormats.rows"), Named());
INSTANTIATE_TEST_SUITE_P(
    DatePatterns, Formats, In("platform/runtime/format/datePatterns.rows"), Named());
INSTANTIATE_TEST_SUITE_P(
    NamedDateFormats, Formats, In("platform/runtime/format/namedDateFormats.rows"), Named());

class WithoutFormat : public RowFile::RowTest<>
{
};

TEST_P(WithoutFormat, GivesTheGeneralText)
{
    EXPECT_EQ(Format(RuntimeRows::Value(row(), "value")), row().text("shown"));
    EXPECT_EQ(CStr(RuntimeRows::Value(row(), "value")), row().text("shown"));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, WithoutFormat, In("platform/runtime/format/withoutFormat.rows"), Named());

class OtherLocales : public RowFile::RowTest<>
{
};

TEST_P(OtherLocales, UseTheirSeparatorsNamesAndCurrency)
{
    ScopedHostLocale locale { QLocale(row().text("locale")) };
    EXPECT_EQ(
        Format(RuntimeRows::Value(row(), "value"), row().text("format")), row().text("shown"));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, OtherLocales, In("platform/runtime/format/otherLocales.rows"), Named());

TEST(GermanNumbers, ReadBackWithTheirOwnSeparators)
{
    ScopedHostLocale german(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(CDbl(u"1.234,5"_s), 1234.5);
}

// Reading back what Format shows gives the same date: a card field's text compared with its
// stored value depends on it.
TEST(RoundTrip, NamedDateFormsReadBackAsTheSameDate)
{
    for (double serial = -657434; serial <= 2958465; serial += 9973.25) {
        for (const char16_t* format : { u"General Date", u"Long Date", u"Medium Date",
                 u"Short Date", u"dd MMM yyyy HH:mm" }) {
            const QString text = Format(Variant::date(serial), format);
            const bool hasTime
                = QStringView(format).contains(u"General") || QStringView(format).contains(u"HH");
            const double expected = hasTime ? serial : DatePartOfSerial(serial);
            // Medium Date keeps two-digit years, which read back inside 1930..2029.
            if (QStringView(format) == u"Medium Date"
                && (Year(serial) < 1930 || Year(serial) > 2029))
                continue;
            ASSERT_TRUE(IsDate(text)) << text.toStdString();
            EXPECT_DOUBLE_EQ(CDate(text), expected) << text.toStdString();
        }
    }
}

} // namespace

namespace {

// Every combination of three pattern pieces formats every kind of awkward value without an
// error: a pupil can type any format text into a field or a cell.
TEST(OddPatterns, NeverRaiseAnError)
{
    const QString pieces[] = { u"0"_s, u"#"_s, u"."_s, u","_s, u"%"_s, u"E+"_s, u"e-"_s, u";"_s,
        u"\""_s, u"\\"_s, u"d"_s, u"mmmm"_s, u"yy"_s, u"h"_s, u"n"_s, u"s"_s, u"AM/PM"_s, u"A/P"_s,
        u"AMPM"_s, u"/"_s, u":"_s, u"c"_s, u"ttttt"_s, u"w"_s, u" "_s };
    const Variant values[] = { 0.0, -0.5, 2.5, 1e15, -1e-05, 1e300, Variant::date(-657434),
        Variant::date(2958465.5), Variant::date(-1.25), Variant::null(), true, Variant(u"abc"_s),
        Variant(u"29/02/2024"_s) };
    int formatted = 0;
    for (const QString& first : pieces) {
        for (const QString& second : pieces) {
            for (const QString& third : pieces) {
                const QString pattern = first + second + third;
                for (const Variant& value : values) {
                    EXPECT_NO_THROW(Format(value, pattern)) << pattern.toStdString();
                    ++formatted;
                }
            }
        }
    }
    EXPECT_EQ(formatted, 25 * 25 * 25 * 13);
}

// IsDate and CDate must agree on every text: the sheet asks one and then calls the other.
TEST(OddDateTexts, IsDateAgreesWithCDate)
{
    const QString pieces[] = { u"1"_s, u"29"_s, u"2024"_s, u"/"_s, u"-"_s, u"."_s, u":"_s, u" "_s,
        u","_s, u"Feb"_s, u"pm"_s, u"Monday"_s, u"99"_s, u"0"_s, u"x"_s };
    for (const QString& first : pieces) {
        for (const QString& second : pieces) {
            for (const QString& third : pieces) {
                for (const QString& fourth : pieces) {
                    const QString text = first + second + third + fourth;
                    bool converted = true;
                    try {
                        CDate(text);
                    } catch (const Error& error) {
                        converted = false;
                        EXPECT_EQ(error.number(), Error::TypeMismatch) << text.toStdString();
                    }
                    EXPECT_EQ(IsDate(text), converted) << text.toStdString();
                }
            }
        }
    }
}

} // namespace

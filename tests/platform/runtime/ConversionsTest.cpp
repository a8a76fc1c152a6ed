#include "platform/runtime/Conversions.h"

#include "RowFile.h"
#include "RuntimeRows.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostLocale.h"
#include "platform/runtime/QStringPrinter.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace Runtime;
using RowFile::In;
using RowFile::Named;
using RuntimeRows::ExpectOutcome;

namespace {

// Checks `function` of the row's value against the column: given as a value and, for a plain
// number or a text, as that number or text too, since both ways must agree.
template <typename Function>
void ExpectOfEachForm(const RowFile::Row& row, const char* column, const Function& function)
{
    const Variant value = RuntimeRows::Value(row, "value");
    ExpectOutcome(row, column, [&] { return function(value); });
    if (value.type() == VariantType::Double)
        ExpectOutcome(row, column, [&] { return function(value.number()); });
    if (value.type() == VariantType::Text)
        ExpectOutcome(row, column, [&] { return function(value.text()); });
}

class ValReading : public RowFile::RowTest<>
{
};

TEST_P(ValReading, ReadsTheLeadingNumber)
{
    ExpectOutcome(row(), "number", [&] { return Val(row().text("text")); });
}

INSTANTIATE_TEST_SUITE_P(Rows, ValReading, In("platform/runtime/conversions/val.rows"), Named());

// Odd inputs must never crash or hang and must give either a number or Error 6.
TEST(ValErrors, OddInputsGiveANumberOrOverflow)
{
    const QString pieces[] = { u"&"_s, u"H"_s, u"O"_s, u"e"_s, u"D"_s, u"+"_s, u"-"_s, u"."_s,
        u"9"_s, u"0"_s, u"F"_s, u" "_s, u"\u00a0"_s, u"\U0001F600"_s, QString(QChar(0)) };
    int readings = 0;
    for (const QString& first : pieces) {
        for (const QString& second : pieces) {
            for (const QString& third : pieces) {
                for (const QString& fourth : pieces) {
                    const QString text = first + second + third + fourth;
                    try {
                        const double value = Val(text);
                        EXPECT_TRUE(std::isfinite(value)) << text.toStdString();
                        ++readings;
                    } catch (const Error& error) {
                        EXPECT_EQ(error.number(), Error::Overflow);
                    }
                }
            }
        }
    }
    EXPECT_EQ(readings, 15 * 15 * 15 * 15);
}

class StrText : public RowFile::RowTest<>
{
};

TEST_P(StrText, MatchesTheClassicText)
{
    EXPECT_EQ(Str(row().number("value")), row().text("text"));
}

INSTANTIATE_TEST_SUITE_P(Rows, StrText, In("platform/runtime/conversions/str.rows"), Named());

TEST(StrText, IgnoresTheLocale)
{
    ScopedHostLocale german(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(Str(1234.5), u" 1234.5"_s);
}

class GeneralNumberText : public RowFile::RowTest<>
{
};

TEST_P(GeneralNumberText, IsStrWithoutBlankAndWithLeadingZero)
{
    EXPECT_EQ(GeneralNumber(row().number("value")), row().text("text"));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, GeneralNumberText, In("platform/runtime/conversions/generalNumber.rows"), Named());

class LocaleNumberReading : public RowFile::RowTest<>
{
};

TEST_P(LocaleNumberReading, IsNumericAndCDblAgree)
{
    EXPECT_EQ(IsNumeric(row().text("text")), row().flag("numeric"));
    ExpectOutcome(row(), "number", [&] { return CDbl(row().text("text")); });
}

INSTANTIATE_TEST_SUITE_P(
    Rows, LocaleNumberReading, In("platform/runtime/conversions/numericText.rows"), Named());

class NumericValues : public RowFile::RowTest<>
{
};

TEST_P(NumericValues, FollowTheKindOfValue)
{
    EXPECT_EQ(IsNumeric(RuntimeRows::Value(row(), "value")), row().flag("numeric"));
    ExpectOutcome(row(), "number", [&] { return CDbl(RuntimeRows::Value(row(), "value")); });
}

INSTANTIATE_TEST_SUITE_P(
    Rows, NumericValues, In("platform/runtime/conversions/numericValues.rows"), Named());

class WholeNumbers : public RowFile::RowTest<>
{
};

TEST_P(WholeNumbers, HalvesGoToEvenWithinTheRange)
{
    ExpectOfEachForm(row(), "cint", [](const auto& value) { return CInt(value); });
    ExpectOfEachForm(row(), "clng", [](const auto& value) { return CLng(value); });
    ExpectOutcome(row(), "round", [&] { return Round(row().number("value")); });
}

INSTANTIATE_TEST_SUITE_P(
    Rows, WholeNumbers, In("platform/runtime/conversions/wholeNumbers.rows"), Named());

class IntAndFix : public RowFile::RowTest<>
{
};

TEST_P(IntAndFix, RoundDownAndTowardZero)
{
    EXPECT_EQ(Int(row().number("value")), row().number("int"));
    EXPECT_EQ(Fix(row().number("value")), row().number("fix"));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, IntAndFix, In("platform/runtime/conversions/intAndFix.rows"), Named());

class RoundRows : public RowFile::RowTest<>
{
};

TEST_P(RoundRows, HalvesGoToEven)
{
    ExpectOutcome(
        row(), "rounded", [&] { return Round(row().number("value"), int(row().whole("digits"))); });
}

INSTANTIATE_TEST_SUITE_P(
    Rows, RoundRows, In("platform/runtime/conversions/roundDigits.rows"), Named());

class CurrencyRows : public RowFile::RowTest<>
{
};

TEST_P(CurrencyRows, KeepFourDecimals)
{
    ExpectOfEachForm(row(), "currency", [](const auto& value) { return CCur(value); });
}

INSTANTIATE_TEST_SUITE_P(Rows, CurrencyRows, In("platform/runtime/conversions/ccur.rows"), Named());

TEST(CurrencySymbolOfLocale, FollowsTheHostLocale)
{
    EXPECT_EQ(CurrencySymbol(), u"£"_s);
    {
        ScopedHostLocale american(QLocale(QLocale::English, QLocale::UnitedStates));
        EXPECT_EQ(CurrencySymbol(), u"$"_s);
        EXPECT_DOUBLE_EQ(CCur(u"$2.25"_s), 2.25);
        EXPECT_FALSE(IsNumeric(u"£2"_s));
    }
    EXPECT_EQ(CurrencySymbol(), u"£"_s);
}

TEST(HostLocaleChoice, TheCLocaleCountsAsBritishEnglish)
{
    // Tests run under LC_ALL=C.UTF-8.
    if (QLocale::system().language() != QLocale::C)
        GTEST_SKIP() << "the system locale is not C";
    EXPECT_EQ(HostLocale().language(), QLocale::English);
    EXPECT_EQ(HostLocale().territory(), QLocale::UnitedKingdom);
}

} // namespace

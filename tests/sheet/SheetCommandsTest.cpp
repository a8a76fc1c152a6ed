#include "sheet/SheetCommands.h"

#include "sheet/SheetFile.h"
#include "sheet/SheetTestSupport.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace Tillane;

namespace {

class Commands : public SheetTest
{
protected:
    struct Outcome
    {
        int status = 0;
        QString out;
        QString err;
    };

    Outcome run(const QStringList& arguments)
    {
        Outcome outcome;
        QTextStream out(&outcome.out);
        QTextStream err(&outcome.err);
        outcome.status = RunSheetCommand(arguments, out, err);
        return outcome;
    }
    QString path(const char* name) const { return folder.filePath(QString::fromLatin1(name)); }
    QString write(const char* name, const QByteArray& bytes)
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path(name);
    }
    QByteArray read(const QString& file)
    {
        QFile input(file);
        EXPECT_TRUE(input.open(QIODevice::ReadOnly));
        return input.readAll();
    }
    // The line `sheet get` prints for the cell.
    QString get(const QString& file, const char* cell)
    {
        const Outcome outcome = run({ u"sheet"_s, u"get"_s, file, QString::fromLatin1(cell) });
        EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
        return outcome.out;
    }

    QTemporaryDir folder;
};

struct EvalRow
{
    const char* name;
    QStringList arguments;
    int status;
    QString out;
    QString err;
};

void PrintTo(const EvalRow& row, std::ostream* stream)
{
    *stream << row.name;
}

class EvalCommand : public Commands, public testing::WithParamInterface<EvalRow>
{
};

TEST_P(EvalCommand, PrintsTheValueOrTheMessage)
{
    const Outcome outcome = run(GetParam().arguments);
    EXPECT_EQ(outcome.status, GetParam().status);
    EXPECT_EQ(outcome.out, GetParam().out);
    EXPECT_EQ(outcome.err, GetParam().err);
}

INSTANTIATE_TEST_SUITE_P(Rows, EvalCommand,
    testing::Values(EvalRow { "whole", { u"eval"_s, u"2+3*4"_s }, 0, u"14\n"_s, QString() },
        EvalRow { "fraction", { u"eval"_s, u"1/4"_s }, 0, u"0.25\n"_s, QString() },
        EvalRow { "negative", { u"eval"_s, u"-2^2"_s }, 0, u"-4\n"_s, QString() },
        EvalRow { "large", { u"eval"_s, u"10^20"_s }, 0, u"1E+20\n"_s, QString() },
        EvalRow { "wordsJoined", { u"eval"_s, u"1"_s, u"+"_s, u"2"_s }, 0, u"3\n"_s, QString() },
        EvalRow { "trailingText", { u"eval"_s, u"1 2"_s }, 1, QString(),
            u"syntax error, token = '2'\n"_s },
        EvalRow { "missingOperand", { u"eval"_s, u"*3"_s }, 2, QString(),
            u"syntax error, token = '*'\n"_s },
        EvalRow { "unknownFunction", { u"eval"_s, u"foo(1)"_s }, 3, QString(),
            u"Undefined function 'foo'\n"_s },
        EvalRow {
            "divisionByZero", { u"eval"_s, u"1/0"_s }, 4, QString(), u"Division by zero\n"_s },
        EvalRow {
            "noExpression", { u"eval"_s }, 64, QString(), u"usage: quorbin-cli eval EXPR\n"_s }),
    [](const testing::TestParamInfo<EvalRow>& info) { return info.param.name; });

TEST_F(Commands, OnlyEvalAndSheetAreSheetCommands)
{
    EXPECT_TRUE(IsSheetCommand({ u"eval"_s, u"1"_s }));
    EXPECT_TRUE(IsSheetCommand({ u"sheet"_s }));
    EXPECT_FALSE(IsSheetCommand({ u"graph"_s }));
    EXPECT_FALSE(IsSheetCommand({}));
    EXPECT_EQ(run({ u"sheet"_s, u"print"_s }).status, UsageError);
}

// The whole path: a CSV of numbers and formulas becomes a sheet, one entry recalculates every
// dependent cell, and the saved file reloads to the same cells.
TEST_F(Commands, SetOnAConvertedSheetRecalculatesAndSaves)
{
    const QString csv
        = write("marks.csv", "Mark,Double,Total\r\n4,=A2*2,=sum(B2:B3)\r\n6,=A3*2,=C2+A2\r\n");
    const QString qnc = path("marks.qnc");
    ASSERT_EQ(run({ u"sheet"_s, u"convert"_s, csv, qnc }).status, 0);
    EXPECT_EQ(get(qnc, "C2"), u"20\t3\t20\t=sum(B2:B3)\n"_s);

    const Outcome set = run({ u"sheet"_s, u"set"_s, qnc, u"a2"_s, u"10"_s });
    EXPECT_EQ(set.status, 0) << set.err.toStdString();
    EXPECT_EQ(get(qnc, "A2"), u"10\t2\t10\t\n"_s);
    EXPECT_EQ(get(qnc, "B2"), u"20\t3\t20\t=A2*2\n"_s);
    EXPECT_EQ(get(qnc, "C2"), u"32\t3\t32\t=sum(B2:B3)\n"_s);
    EXPECT_EQ(get(qnc, "C3"), u"42\t3\t42\t=C2+A2\n"_s);

    // Reloaded and saved again, the file is the same to the byte.
    Sheet reloaded;
    ASSERT_TRUE(LoadSheetFile(qnc, reloaded).isComplete());
    EXPECT_EQ(SheetFileBytes(reloaded), read(qnc));
}

TEST_F(Commands, RefusedEntryLeavesTheFileUnchanged)
{
    const QString csv = write("in.csv", "1,=A1*2\n");
    const QString qnc = path("in.qnc");
    ASSERT_EQ(run({ u"sheet"_s, u"convert"_s, csv, qnc }).status, 0);
    const QByteArray before = read(qnc);
    const Outcome outcome = run({ u"sheet"_s, u"set"_s, qnc, u"A1"_s, u"=B1"_s });
    EXPECT_EQ(outcome.status, CommandFailed);
    EXPECT_EQ(outcome.err, u"Circular cell reference\n"_s);
    EXPECT_EQ(read(qnc), before);
}

TEST_F(Commands, FaultDuringRecalculationLeavesTheFileUnchanged)
{
    const QString qnc = path("in.qnc");
    ASSERT_EQ(run({ u"sheet"_s, u"convert"_s, write("in.csv", "4,=1/A1\n"), qnc }).status, 0);
    const QByteArray before = read(qnc);
    const Outcome outcome = run({ u"sheet"_s, u"set"_s, qnc, u"A1"_s, u"0"_s });
    EXPECT_EQ(outcome.status, CommandFailed);
    EXPECT_EQ(outcome.err, u"Division by zero\n"_s);
    EXPECT_EQ(read(qnc), before);
}

TEST_F(Commands, SetOnALockedCellIsRefused)
{
    Sheet locked;
    EnterCell(locked, 1, 1, u"5"_s);
    locked.record(1, 1).Locked = true;
    const QString qnc = path("locked.qnc");
    ASSERT_TRUE(SaveSheetFile(locked, qnc).isEmpty());
    const Outcome outcome = run({ u"sheet"_s, u"set"_s, qnc, u"A1"_s, u"6"_s });
    EXPECT_EQ(outcome.status, CommandFailed);
    EXPECT_EQ(outcome.err, u"Cell A1 is locked.\n"_s);
}

TEST_F(Commands, ConvertToTextWritesShownTexts)
{
    const QString csv = write("in.csv", "50%,=A1*2,\"x,y\"\n");
    const QString txt = path("out.txt");
    ASSERT_EQ(run({ u"sheet"_s, u"convert"_s, csv, txt }).status, 0);
    EXPECT_EQ(read(txt), "50%\t1\tx,y\r\n"_ba);
    const QString back = path("back.csv");
    ASSERT_EQ(run({ u"sheet"_s, u"convert"_s, txt, back }).status, 0);
    EXPECT_EQ(read(back), "50%,1,x,y\r\n"_ba);
}

TEST_F(Commands, ConvertSheetToSheetKeepsTheBytes)
{
    const QString qnc = path("a.qnc");
    ASSERT_EQ(run({ u"sheet"_s, u"convert"_s, write("in.csv", "1,=A1+1\n"), qnc }).status, 0);
    const QString copy = path("b.QNC");
    ASSERT_EQ(run({ u"sheet"_s, u"convert"_s, qnc, copy }).status, 0);
    EXPECT_EQ(read(copy), read(qnc));
}

TEST_F(Commands, ConvertReportsRefusedEntriesAndGoesOn)
{
    const QString qnc = path("out.qnc");
    const Outcome outcome = run({ u"sheet"_s, u"convert"_s, write("in.csv", "=A1,7\n"), qnc });
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, u"A1: Circular cell reference\n"_s);
    EXPECT_EQ(get(qnc, "B1"), u"7\t2\t7\t\n"_s);
}

struct FailureRow
{
    const char* name;
    QStringList arguments; // "%1" stands for the test's folder
    int status;
    QString errStart;
};

void PrintTo(const FailureRow& row, std::ostream* stream)
{
    *stream << row.name;
}

class FailingCommands : public Commands, public testing::WithParamInterface<FailureRow>
{
};

TEST_P(FailingCommands, ExplainOnStandardError)
{
    write("damaged.qnc", "\x01\x00\x00\x00\x02\x00\x36"_ba);
    write("sheet.qnc", SheetFileBytes(sheet));
    QStringList arguments;
    for (const QString& argument : GetParam().arguments)
        arguments.append(QString(argument).replace(u"%1"_s, folder.path()));
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.status, GetParam().status);
    EXPECT_TRUE(outcome.err.startsWith(GetParam().errStart)) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.out.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Rows, FailingCommands,
    testing::Values(
        FailureRow { "convertNeedsTwoFiles", { u"sheet"_s, u"convert"_s, u"%1/a.csv"_s }, 64,
            u"usage: quorbin-cli sheet convert"_s },
        FailureRow { "convertUnknownKind",
            { u"sheet"_s, u"convert"_s, u"%1/a.csv"_s, u"%1/a.xls"_s }, 64,
            u"usage: quorbin-cli sheet convert"_s },
        FailureRow { "convertMissingInput",
            { u"sheet"_s, u"convert"_s, u"%1/none.csv"_s, u"%1/a.qnc"_s }, 1, u"Cannot open"_s },
        FailureRow { "convertDamagedInput",
            { u"sheet"_s, u"convert"_s, u"%1/damaged.qnc"_s, u"%1/a.csv"_s }, 1,
            u"This file is damaged"_s },
        FailureRow { "getBadCell", { u"sheet"_s, u"get"_s, u"%1/sheet.qnc"_s, u"AA1"_s }, 64,
            u"\"AA1\" names no cell"_s },
        FailureRow { "getMissingFile", { u"sheet"_s, u"get"_s, u"%1/none.qnc"_s, u"A1"_s }, 1,
            u"Cannot open"_s },
        FailureRow { "setDamagedFile",
            { u"sheet"_s, u"set"_s, u"%1/damaged.qnc"_s, u"A1"_s, u"1"_s }, 1,
            u"This file is damaged"_s },
        FailureRow { "setWithoutText", { u"sheet"_s, u"set"_s, u"%1/sheet.qnc"_s, u"A1"_s }, 64,
            u"usage: quorbin-cli sheet set"_s },
        FailureRow { "convertIntoMissingFolder",
            { u"sheet"_s, u"convert"_s, u"%1/sheet.qnc"_s, u"%1/no/such/out.csv"_s }, 1,
            u"Cannot save"_s }),
    [](const testing::TestParamInfo<FailureRow>& info) { return info.param.name; });

TEST_F(Commands, DamagedFileIsNotOverwrittenBySet)
{
    const QByteArray damaged = "\x01\x00\x00\x00\x02\x00\x36\x01\x02\x00"_ba;
    const QString qnc = write("damaged.qnc", damaged);
    run({ u"sheet"_s, u"set"_s, qnc, u"A1"_s, u"1"_s });
    EXPECT_EQ(read(qnc), damaged);
}

} // namespace

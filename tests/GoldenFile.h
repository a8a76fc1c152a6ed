#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QString>
#include <QStringList>
#include <algorithm>
#include <gtest/gtest.h>

// Golden files: a whole output (a picture's record trace, a written file's bytes) kept under
// tests/data and compared in one piece, so that every record is checked, not a few picked ones.
//
//     EXPECT_TRUE(Golden::Matches(u"graph/bar3d.trace"_s, Golden::Lines(trace)));
//
// To (re)write the files from the current output, run the test program with
// QUORBIN_UPDATE_GOLDEN=1 in the environment; the comparison is then skipped and the file
// rewritten. Read the diff before committing it: a golden is only as right as the output it was
// taken from. Without the variable a missing file is a failure, never a pass.
namespace Golden {

// Text lines as a golden file holds them: each ended by a line feed.
inline QByteArray Lines(const QStringList& lines)
{
    QByteArray bytes;
    for (const QString& line : lines)
        bytes += line.toUtf8() + '\n';
    return bytes;
}

namespace Detail {

// A few lines either side of the first line that differs, from both sides.
inline QString LineDifference(const QByteArray& expected, const QByteArray& actual)
{
    const QList<QByteArray> want = expected.split('\n');
    const QList<QByteArray> got = actual.split('\n');
    qsizetype first = 0;
    while (first < want.size() && first < got.size() && want[first] == got[first])
        ++first;
    QString text = QStringLiteral("first difference at line %1\n").arg(first + 1);
    const auto excerpt = [&](const char* title, const QList<QByteArray>& lines) {
        text += QString::fromLatin1(title);
        for (qsizetype line = std::max<qsizetype>(0, first - 3);
             line < std::min(lines.size(), first + 4); ++line)
            text += QStringLiteral("%1%2: %3\n")
                        .arg(line == first ? QStringLiteral("> ") : QStringLiteral("  "))
                        .arg(line + 1)
                        .arg(QString::fromUtf8(lines[line]));
    };
    excerpt("golden:\n", want);
    excerpt("output:\n", got);
    return text;
}

inline QString ByteDifference(const QByteArray& expected, const QByteArray& actual)
{
    qsizetype first = 0;
    while (first < expected.size() && first < actual.size() && expected[first] == actual[first])
        ++first;
    const qsizetype from = std::max<qsizetype>(0, first - 16) & ~qsizetype(15);
    return QStringLiteral("%1 bytes against %2; first difference at byte %3\n"
                          "golden from byte %4: %5\noutput from byte %4: %6\n")
        .arg(expected.size())
        .arg(actual.size())
        .arg(first)
        .arg(from)
        .arg(QString::fromLatin1(expected.mid(from, 48).toHex(' ')))
        .arg(QString::fromLatin1(actual.mid(from, 48).toHex(' ')));
}

} // namespace Detail

// Compares `actual` with the golden file at `name` under the test data folder.
inline testing::AssertionResult Matches(const QString& name, const QByteArray& actual)
{
    const QString path = QStringLiteral(QUORBIN_TEST_DATA "/") + name;
    if (qEnvironmentVariableIntValue("QUORBIN_UPDATE_GOLDEN") == 1) {
        QDir().mkpath(QFileInfo(path).path());
        QSaveFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(actual) != actual.size()
            || !file.commit())
            return testing::AssertionFailure() << "cannot write " << path.toStdString();
        return testing::AssertionSuccess() << "rewrote " << path.toStdString();
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return testing::AssertionFailure()
            << "no golden file " << path.toStdString()
            << " (run with QUORBIN_UPDATE_GOLDEN=1 to write it, then check it)";
    const QByteArray expected = file.readAll();
    if (expected == actual)
        return testing::AssertionSuccess();
    const bool text = !expected.contains('\0') && !actual.contains('\0');
    return testing::AssertionFailure() << "output differs from " << path.toStdString() << "\n"
                                       << (text ? Detail::LineDifference(expected, actual)
                                                : Detail::ByteDifference(expected, actual))
                                              .toStdString();
}

} // namespace Golden

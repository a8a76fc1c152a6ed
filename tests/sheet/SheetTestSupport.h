#pragma once

#include "platform/runtime/HostLocale.h"
#include "sheet/CellEntry.h"
#include "sheet/CellReferences.h"
#include "sheet/Sheet.h"

#include <QLocale>
#include <QString>
#include <gtest/gtest.h>
#include <ostream>

// Shows QString values as text in failure messages instead of bytes.
inline void PrintTo(const QString& text, std::ostream* stream)
{
    *stream << '"' << text.toStdString() << '"';
}

// Shows bytes in hexadecimal.
inline void PrintTo(const QByteArray& bytes, std::ostream* stream)
{
    *stream << bytes.toHex(' ').toStdString();
}

namespace Tillane {

inline void PrintTo(const CellAddress& cell, std::ostream* stream)
{
    *stream << CellName(cell).toStdString();
}

inline void PrintTo(const CellRef& element, std::ostream* stream)
{
    *stream << "{kind " << int(element.Kind) << ", row " << element.Row << ", column "
            << element.Column << '}';
}

} // namespace Tillane

// Sheet tests run in the program's own locale (English, United Kingdom: "£", day/month/year)
// whatever the machine's is.
class SheetTest : public testing::Test
{
protected:
    // The cell named as in the sheet ("B7").
    static Tillane::CellAddress at(const char* name)
    {
        const auto cell = Tillane::CellFromName(QString::fromLatin1(name));
        EXPECT_TRUE(cell.has_value()) << name;
        return cell.value_or(Tillane::CellAddress { 1, 1 });
    }
    // Enters the text as if typed; errors reach the test.
    void enter(const char* name, const QString& text)
    {
        const Tillane::CellAddress cell = at(name);
        Tillane::EnterCell(sheet, cell.Row, cell.Column, text);
    }
    // Enters each "cell: text" of the list in turn, as rows of the row files write them.
    void enterAll(const QStringList& entries)
    {
        for (const QString& entry : entries) {
            const qsizetype colon = entry.indexOf(u": ");
            enter(entry.first(colon).toLatin1().constData(), entry.sliced(colon + 2));
        }
    }
    const Tillane::CellRecord& record(const char* name) const { return sheet.record(at(name)); }
    QString shown(const char* name) const
    {
        const Tillane::CellAddress cell = at(name);
        return sheet.display(cell.Row, cell.Column).Text;
    }
    double value(const char* name) const { return record(name).Value; }

    Runtime::ScopedHostLocale locale { QLocale(QLocale::English, QLocale::UnitedKingdom) };
    Tillane::Sheet sheet;
};

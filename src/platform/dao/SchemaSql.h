#pragma once

#include "platform/dao/ColumnType.h"

#include <QString>

namespace Dao {

// SQLite text for names and column definitions, written one way everywhere so that the
// engine can read back what it wrote.

// "name" with inner double quotes doubled: safe for any name, reserved words included.
QString QuoteIdentifier(const QString& name);
// 'text' with inner single quotes doubled.
QString QuoteString(const QString& text);

// One column of CREATE TABLE or ADD COLUMN:
//   "CardName" TEXT(30) NOT NULL COLLATE NOCASE CHECK ("CardName" <> '')
// Text and memo columns compare without regard to case; a required column is NOT NULL; a
// text column that does not allow zero-length values refuses '' by a CHECK that names it.
QString ColumnDefinition(
    const QString& name, const ColumnType& type, bool required, bool allowZeroLength);

} // namespace Dao

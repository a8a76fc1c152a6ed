#pragma once

#include "platform/dao/Field.h"

#include <QString>
#include <QStringList>

namespace Bramlet {

class CardDatabase;

// A new card file's text fields Field1..Field6, laid out by SetDefaultFieldLayout.
inline constexpr int StartingFieldCount = 6;

// The field type codes every card part uses, kept in each column's FieldType property.
enum FieldTypeCode : int {
    CardNameField = 0,
    FreeTextField = 1,
    MainPictureField = 2,
    TextField = 3,
    WholeNumberField = 4,
    DecimalNumberField = 5,
    CurrencyField = 6,
    DateField = 7,
    TimeField = 8,
    DateTimeField = 9,
    OnOffField = 10,
    DropDownField = 11,
    WebAddressField = 12,
    ResourceField = 13,
    KeywordField = 14,
};

// The SQL type word the field editor writes in ALTER TABLE for a code ("TEXT", "LONG" ...);
// empty for the keyword slot, which no field becomes.
QString SqlTypeWord(int fieldType);
// The FieldFormat a field takes with its type: "General Number", "Fixed", "Currency",
// "dd MMM yyyy", "HH:mm", "dd MMM yyyy HH:mm", or empty.
QString DefaultFieldFormat(int fieldType);

// The per-column accessors of the card window. Reading a missing property gives 0 or the
// empty text; writing creates it (FieldType as a Long).
int FieldType(Dao::Field& field);
void SetFieldType(Dao::Field& field, int fieldType);
QString FieldFormat(Dao::Field& field);
void SetFieldFormat(Dao::Field& field, const QString& format);
QString FieldLabel(Dao::Field& field);
void SetFieldLabel(Dao::Field& field, const QString& label);
// The drop-down items, stored joined by ",".
QString FieldChoices(Dao::Field& field);
void SetFieldChoices(Dao::Field& field, const QString& choices);

// The layout of the six fields a new card file starts with, for Field<index + 1>: label
// "Field Label" at (120, 3780 + 480 × index) sized 2655 × 255, control at
// (2880, 3720 + 480 × index) sized 4935 × 375, type 3 (text), visible.
void SetDefaultFieldLayout(Dao::Field& field, int index);

// Gives the starting fields Field1, Field2 ... the labels in order (an empty label or one past
// the sixth leaves its field as it was). A new file's fields all read "Field Label"; named up
// front, a class list imports straight away, since import matches columns by label.
void LabelStartingFields(CardDatabase& cards, const QStringList& labels);

// The highest numbers in the names of the Field<n>, URL<n> and Resource<n> columns (the
// number read after the first 5, 3 and 8 characters); a new column takes one more.
struct ColumnCounters
{
    int FieldCounter = 0;
    int UrlCounter = 0;
    int ResourceCounter = 0;
};
ColumnCounters CountColumns(const QStringList& columnNames);

} // namespace Bramlet

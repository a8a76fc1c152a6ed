#pragma once

#include <QByteArray>
#include <QRect>
#include <QString>
#include <QStringList>

namespace Bramlet {

// The kinds of control a card shows, one per bound column; the window makes a widget of the
// kind and names it after the control array it belongs to ("txtField(3)").
enum class ControlKind {
    Name, // txtName
    FreeText, // txtFreeText
    Picture, // picPicture
    TextField, // txtField: text, number and currency fields (and dates and drop-downs while
               // the fields are being edited)
    DatePicker, // DTPicker, with a check box for Null
    CheckBox, // chkField, its caption the field's label
    DropDown, // cmbField, filled from FieldChoices
    WebAddress, // cmdURL
    Resource, // cmdResource
    Keyword, // txtKeyWord(0..5)
};

// One bound control of the card: where it sits (from the column's layout properties, in
// twips) and what it shows now. The card document keeps one per bound column, in column
// order; the window only mirrors them.
struct CardControl
{
    ControlKind Kind = ControlKind::TextField;
    // The control array's name and the element ("txtField", 3); fixed controls have index -1
    // except the keyword boxes, 0 to 5.
    QString ArrayName;
    int ArrayIndex = -1;
    // The column's position in the card set, and its field type code.
    int Column = 0;
    int FieldType = 0;
    QString FieldName;
    QString Label;
    QString Format;
    QStringList Choices;
    // The control's and its label's rectangles; user fields only. The control's height is
    // the template's, so FieldHeight is kept but never applied on the card.
    QRect FieldRect;
    QRect LabelRect;
    bool Visible = true;
    // A separate label beside the control (text, number, date and drop-down fields).
    bool HasLabel = false;

    // What the control shows. Text boxes, drop-downs (the item's text, empty for none) and
    // the two buttons (the address or path, their tool tip) use Text; check boxes Checked; date
    // pickers Null and Date (a day serial).
    QString Text;
    bool Checked = false;
    bool Null = true;
    double Date = 0.0;
    // A keyword's key picture, as stored.
    QByteArray KeyPicture;
    // The user changed the control since the card was shown: only such controls are written
    // when the card is saved, so a value another copy saved meanwhile is not overwritten by
    // what this window showed before.
    bool Touched = false;
};

} // namespace Bramlet

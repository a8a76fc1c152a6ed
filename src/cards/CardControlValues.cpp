#include "cards/CardControlValues.h"

#include "cards/CardDatabase.h"
#include "cards/CardValues.h"
#include "platform/runtime/Format.h"

using namespace Qt::Literals::StringLiterals;
using Runtime::Variant;

namespace Bramlet {

void BlankCardControls(std::vector<CardControl>& controls)
{
    for (CardControl& control : controls) {
        control.Text.clear();
        control.Checked = false;
        control.Null = true;
        control.Date = 0.0;
        control.KeyPicture.clear();
        control.Touched = false;
    }
}

QByteArray ReadCardControls(
    const CardDatabase& cards, Dao::Recordset& set, std::vector<CardControl>& controls)
{
    QByteArray picture;
    for (CardControl& control : controls) {
        const Variant value = set.Fields(control.Column)->Value();
        const bool none = value.isNull() || value.isEmpty();
        switch (control.Kind) {
        case ControlKind::Name:
        case ControlKind::FreeText:
        case ControlKind::WebAddress:
        case ControlKind::Resource:
            control.Text = none ? QString() : Runtime::Format(value);
            break;
        case ControlKind::TextField:
            control.Text = ShownText(value, control.Format);
            break;
        case ControlKind::CheckBox:
            control.Checked = value.isNumeric() && value.number() != 0.0;
            break;
        case ControlKind::DropDown:
            // Only an item equal to the stored text (with case) is selected.
            control.Text = none ? QString() : Runtime::Format(value);
            if (!control.Choices.contains(control.Text))
                control.Text.clear();
            break;
        case ControlKind::DatePicker:
            control.Null = !value.isNumeric();
            control.Date = value.isNumeric() ? value.number() : 0.0;
            break;
        case ControlKind::Keyword:
            control.Text = cards.KeywordText(value);
            // The keyword table stands on the keyword found.
            if (!control.Text.isEmpty())
                control.KeyPicture = cards.KeywordTable()->Fields(u"KeyPicture"_s)->Value().bytes();
            break;
        case ControlKind::Picture:
            if (value.type() == Runtime::VariantType::Binary)
                picture = value.bytes();
            break;
        }
    }
    return picture;
}

void WriteCardControls(Dao::Recordset& set, const std::vector<CardControl>& controls, bool adding)
{
    for (const CardControl& control : controls) {
        // What the user did not touch keeps what the file holds now (another copy may have
        // saved it since this card was shown).
        const bool name = control.Kind == ControlKind::Name;
        if (!control.Touched && !(name && adding))
            continue;
        const auto field = set.Fields(control.Column);
        switch (control.Kind) {
        case ControlKind::Name:
            field->SetValue(control.Text.trimmed());
            break;
        case ControlKind::FreeText:
            // The column takes no empty text: an emptied box is no free text.
            field->SetValue(control.Text.isEmpty() ? Variant::null() : Variant(control.Text));
            break;
        case ControlKind::TextField:
        case ControlKind::DropDown:
            if (const auto value
                = TypedFieldValue(control.FieldType, control.Text, field->Value(), control.Format))
                field->SetValue(*value);
            break;
        case ControlKind::DatePicker:
            if (const auto value = PickedDateValue(control.Null, control.Date, field->Value()))
                field->SetValue(*value);
            break;
        case ControlKind::CheckBox:
            field->SetValue(control.Checked);
            break;
        case ControlKind::WebAddress:
        case ControlKind::Resource:
            if (control.Text != Runtime::Format(field->Value()))
                field->SetValue(control.Text.isEmpty() ? Variant::null() : Variant(control.Text));
            break;
        case ControlKind::Picture:
        case ControlKind::Keyword:
            break;
        }
    }
}

QStringList CardLinesOf(const std::vector<CardControl>& controls)
{
    QStringList lines;
    for (const CardControl& control : controls) {
        QString text;
        switch (control.Kind) {
        case ControlKind::Name:
            lines.append(u"Name\t"_s + control.Text);
            continue;
        case ControlKind::TextField:
        case ControlKind::DropDown:
        case ControlKind::WebAddress:
        case ControlKind::Resource:
            text = control.Text;
            break;
        case ControlKind::CheckBox:
            text = control.Checked ? u"1"_s : u"0"_s;
            break;
        case ControlKind::DatePicker:
            text = control.Null ? QString()
                                : Runtime::Format(Variant::date(control.Date), control.Format);
            break;
        default:
            continue;
        }
        if (control.Visible)
            lines.append(control.Label + u'\t' + text);
    }
    return lines;
}

} // namespace Bramlet

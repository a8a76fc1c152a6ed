#include "cards/CardControls.h"

#include "cards/CardFields.h"
#include "cards/DaoProperties.h"
#include "platform/dao/Recordset.h"
#include "platform/dao/TableDef.h"

#include <QHash>
#include <memory>

using namespace Qt::Literals::StringLiterals;
using Runtime::Variant;

namespace Bramlet {

namespace {

int NumberProperty(Dao::Field& field, const QString& name)
{
    const Variant value = GetDaoProperty(field, name);
    return value.isNumeric() ? static_cast<int>(value.number()) : 0;
}

CardControl MakeControl(
    int column, const std::shared_ptr<Dao::Field>& field, bool fieldEditing, int& keywordIndex)
{
    CardControl control;
    control.Column = column;
    control.FieldName = field->Name();
    control.FieldType = FieldType(*field);
    const auto place = [&](ControlKind kind, const QString& arrayName, bool label) {
        control.Kind = kind;
        control.ArrayName = arrayName;
        control.HasLabel = label;
        control.Label = FieldLabel(*field);
        control.Format = FieldFormat(*field);
        control.FieldRect
            = QRect(NumberProperty(*field, u"FieldLeft"_s), NumberProperty(*field, u"FieldTop"_s),
                NumberProperty(*field, u"FieldWidth"_s), NumberProperty(*field, u"FieldHeight"_s));
        control.LabelRect
            = QRect(NumberProperty(*field, u"LabelLeft"_s), NumberProperty(*field, u"LabelTop"_s),
                NumberProperty(*field, u"LabelWidth"_s), NumberProperty(*field, u"LabelHeight"_s));
        // A field without the property (made by hand) is shown rather than lost.
        const Variant visible = GetDaoProperty(*field, u"FieldVisible"_s);
        control.Visible = visible.isEmpty() || visible.isNull() || visible.number() != 0.0;
    };
    switch (control.FieldType) {
    case CardNameField:
        control.Kind = ControlKind::Name;
        control.ArrayName = u"txtName"_s;
        break;
    case FreeTextField:
        control.Kind = ControlKind::FreeText;
        control.ArrayName = u"txtFreeText"_s;
        break;
    case MainPictureField:
        control.Kind = ControlKind::Picture;
        control.ArrayName = u"picPicture"_s;
        break;
    case TextField:
    case WholeNumberField:
    case DecimalNumberField:
    case CurrencyField:
        place(ControlKind::TextField, u"txtField"_s, true);
        break;
    case DateField:
    case TimeField:
    case DateTimeField:
        if (fieldEditing)
            place(ControlKind::TextField, u"txtField"_s, true);
        else
            place(ControlKind::DatePicker, u"DTPicker"_s, true);
        break;
    case OnOffField:
        place(ControlKind::CheckBox, u"chkField"_s, false);
        break;
    case DropDownField:
        if (fieldEditing) {
            place(ControlKind::TextField, u"txtField"_s, true);
        } else {
            place(ControlKind::DropDown, u"cmbField"_s, true);
            for (const QString& item : FieldChoices(*field).split(u',')) {
                if (!item.trimmed().isEmpty())
                    control.Choices.append(item.trimmed());
            }
        }
        break;
    case WebAddressField:
        place(ControlKind::WebAddress, u"cmdURL"_s, false);
        break;
    case ResourceField:
        place(ControlKind::Resource, u"cmdResource"_s, false);
        break;
    case KeywordField:
        control.Kind = ControlKind::Keyword;
        control.ArrayName = u"txtKeyWord"_s;
        control.ArrayIndex = keywordIndex < 6 ? keywordIndex : -1;
        ++keywordIndex;
        break;
    default:
        control.ArrayName.clear(); // a column no control shows
        break;
    }
    return control;
}

} // namespace

std::vector<CardControl> MakeCardControls(Dao::Recordset& set, bool fieldEditing)
{
    std::vector<CardControl> controls;
    int keywordIndex = 0;
    QHash<QString, int> elements;
    const auto fields = set.Fields().items();
    for (int column = 0; column < static_cast<int>(fields.size()); ++column) {
        CardControl control
            = MakeControl(column, fields[static_cast<size_t>(column)], fieldEditing, keywordIndex);
        if (control.ArrayName.isEmpty()
            || (control.Kind == ControlKind::Keyword && control.ArrayIndex < 0))
            continue;
        // Field control arrays count from 1: element 0 is the template.
        if (control.ArrayIndex < 0 && control.FieldType > MainPictureField)
            control.ArrayIndex = ++elements[control.ArrayName];
        controls.push_back(std::move(control));
    }
    return controls;
}

int FindControlOfKind(const std::vector<CardControl>& controls, ControlKind kind)
{
    for (size_t index = 0; index < controls.size(); ++index) {
        if (controls[index].Kind == kind)
            return static_cast<int>(index);
    }
    return -1;
}

int FindControlWithLabel(const std::vector<CardControl>& controls, const QString& label)
{
    for (size_t index = 0; index < controls.size(); ++index) {
        const CardControl& control = controls[index];
        if (IsUserField(control) && control.Label.compare(label, Qt::CaseInsensitive) == 0)
            return static_cast<int>(index);
    }
    return -1;
}

bool IsUserField(const CardControl& control)
{
    return control.FieldType >= TextField && control.FieldType <= ResourceField;
}

void SnapFieldControl(CardControl& control, int left, int top, int grid)
{
    const int x = left / grid * grid;
    const int y = top / grid * grid;
    control.FieldRect.moveTo(x, y);
    if (control.Kind == ControlKind::TextField || control.Kind == ControlKind::DatePicker)
        control.LabelRect.moveTo(x - control.LabelRect.width() - 105, y + 60);
}

void StoreFieldPlacement(Dao::TableDef& table, const CardControl& control)
{
    const auto field = table.Fields(control.FieldName);
    SetDaoProperty(*field, u"FieldLeft"_s, qint64(control.FieldRect.left()));
    SetDaoProperty(*field, u"FieldTop"_s, qint64(control.FieldRect.top()));
    SetDaoProperty(*field, u"FieldWidth"_s, qint64(control.FieldRect.width()));
    SetDaoProperty(*field, u"FieldHeight"_s, qint64(control.FieldRect.height()));
    if (control.HasLabel) {
        SetDaoProperty(*field, u"LabelLeft"_s, qint64(control.LabelRect.left()));
        SetDaoProperty(*field, u"LabelTop"_s, qint64(control.LabelRect.top()));
        SetDaoProperty(*field, u"LabelWidth"_s, qint64(control.LabelRect.width()));
        SetDaoProperty(*field, u"LabelHeight"_s, qint64(control.LabelRect.height()));
    }
}

} // namespace Bramlet

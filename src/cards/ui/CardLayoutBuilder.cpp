#include "cards/ui/CardLayoutBuilder.h"

#include "cards/CardFields.h"
#include "cards/ui/CardArea.h"
#include "cards/ui/DatePicker.h"
#include "cards/ui/KeyFilter.h"
#include "frame/ui/ResourceIcons.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

using namespace Qt::Literals::StringLiterals;

namespace Bramlet {

namespace {

constexpr int webAddressIcon = 133;
constexpr int linkedFileIcon = 134;
constexpr int labelHeight = 255;
constexpr int textFieldLength = 50;

QString ElementName(const QString& array, int index)
{
    return array + u'(' + QString::number(index) + u')';
}

QWidget* MakeFieldControl(const CardControl& control, QWidget* parent)
{
    switch (control.Kind) {
    case ControlKind::TextField: {
        auto* box = new QLineEdit(parent);
        if (control.FieldType == TextField || control.FieldType == DropDownField)
            box->setMaxLength(textFieldLength);
        if (control.FieldType == WholeNumberField)
            box->installEventFilter(new KeyFilter(u"I"_s, box));
        else if (control.FieldType == DecimalNumberField || control.FieldType == CurrencyField)
            box->installEventFilter(new KeyFilter(u"R"_s, box));
        return box;
    }
    case ControlKind::DatePicker: {
        auto* picker = new DatePicker(parent);
        picker->setFieldFormat(control.Format);
        return picker;
    }
    case ControlKind::CheckBox:
        return new QCheckBox(control.Label, parent);
    case ControlKind::DropDown: {
        auto* list = new QComboBox(parent);
        list->addItems(control.Choices);
        list->setCurrentIndex(-1);
        return list;
    }
    case ControlKind::WebAddress:
    case ControlKind::Resource: {
        auto* button = new QToolButton(parent);
        button->setIcon(Frame::ResourceIcon(
            control.Kind == ControlKind::WebAddress ? webAddressIcon : linkedFileIcon));
        button->setAutoRaise(false);
        return button;
    }
    default:
        return nullptr;
    }
}

} // namespace

int TemplateHeight(ControlKind kind)
{
    switch (kind) {
    case ControlKind::WebAddress:
    case ControlKind::Resource:
        return 570;
    default:
        return 375;
    }
}

CardWidgets BuildCardLayout(
    CardArea* area, const std::vector<CardControl>& controls, const FixedCardWidgets& fixed)
{
    CardWidgets made;
    made.Controls.assign(controls.size(), nullptr);
    made.Labels.assign(controls.size(), nullptr);
    int labels = 0;
    for (size_t index = 0; index < controls.size(); ++index) {
        const CardControl& control = controls[index];
        switch (control.Kind) {
        case ControlKind::Name:
            made.Controls[index] = fixed.txtName;
            continue;
        case ControlKind::FreeText:
            made.Controls[index] = fixed.txtFreeText;
            continue;
        case ControlKind::Picture:
            made.Controls[index] = fixed.picPicture;
            continue;
        case ControlKind::Keyword:
            made.Controls[index] = fixed.txtKeyWord.value(control.ArrayIndex);
            continue;
        default:
            break;
        }
        QWidget* widget = MakeFieldControl(control, area);
        if (widget == nullptr)
            continue;
        widget->setObjectName(ElementName(control.ArrayName, control.ArrayIndex));
        widget->setAccessibleName(control.Label);
        if (auto* picker = qobject_cast<DatePicker*>(widget)) {
            picker->chkNull->setAccessibleName(control.Label);
            picker->dtpValue->setAccessibleName(control.Label);
        }
        widget->setGeometry(area->pixels(control.FieldRect.left()),
            area->pixels(control.FieldRect.top()), area->pixels(control.FieldRect.width()),
            area->pixels(TemplateHeight(control.Kind)));
        widget->hide();
        made.Controls[index] = widget;
        made.Made.append(widget);
        if (control.HasLabel) {
            auto* label = new QLabel(control.Label, area);
            label->setObjectName(ElementName(u"lblFieldLabel"_s, ++labels));
            label->setBuddy(widget);
            label->setGeometry(area->pixels(control.LabelRect.left()),
                area->pixels(control.LabelRect.top()), area->pixels(control.LabelRect.width()),
                area->pixels(labelHeight));
            label->hide();
            made.Labels[index] = label;
            made.Made.append(label);
        }
    }
    return made;
}

} // namespace Bramlet

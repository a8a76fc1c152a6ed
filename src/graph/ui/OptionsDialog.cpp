#include "graph/ui/OptionsDialog.h"

#include "frame/ErrorMessage.h"
#include "frame/FrameSettings.h"
#include "frame/Prompts.h"
#include "frame/ui/WidgetHelpers.h"
#include "graph/GraphOptions.h"
#include "platform/runtime/Error.h"
#include "resources/StringTable.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace Ormsey {

OptionsDialog::OptionsDialog(QWidget* parent)
    : QDialog(parent)
{
    setModal(true);
    auto* layout = new QVBoxLayout(this);
    m_body = new QVBoxLayout;
    layout->addLayout(m_body);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    m_ok = Tagged(new QPushButton(this), 1000);
    m_cancel = Tagged(new QPushButton(this), 1001);
    m_apply = Tagged(new QPushButton(this), 1002);
    m_ok->setDefault(true);
    for (QPushButton* button : { m_ok, m_cancel, m_apply })
        buttons->addWidget(button);
    layout->addLayout(buttons);
    connect(m_ok, &QPushButton::clicked, this, [this] { Apply(true); });
    connect(m_apply, &QPushButton::clicked, this, [this] { Apply(false); });
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void OptionsDialog::Localise()
{
    setWindowTitle(GetResString(10000));
    Frame::LocaliseControls(this);
}

void OptionsDialog::Apply(bool hide)
{
    if (!CheckContents())
        return;
    HandOver();
    if (hide)
        accept();
}

void OptionsDialog::BindAutoScale(
    QCheckBox* autoScale, const QList<QWidget*>& rangeControls, QLineEdit* firstBox)
{
    connect(autoScale, &QCheckBox::toggled, autoScale, [autoScale, rangeControls, firstBox] {
        EnableRange(autoScale, rangeControls);
        if (!autoScale->isChecked())
            firstBox->setFocus();
    });
    EnableRange(autoScale, rangeControls);
}

void OptionsDialog::EnableRange(QCheckBox* autoScale, const QList<QWidget*>& rangeControls)
{
    for (QWidget* control : rangeControls)
        control->setEnabled(!autoScale->isChecked());
}

bool OptionsDialog::CheckRangeBoxes(QLineEdit* minimum, QLineEdit* maximum)
{
    QString low = minimum->text();
    QString high = maximum->text();
    const AxisRangeCheck check = CheckAxisRange(low, high);
    switch (check) {
    case AxisRangeCheck::Accepted:
        minimum->setText(low);
        maximum->setText(high);
        return true;
    case AxisRangeCheck::MinimumTooLarge:
    case AxisRangeCheck::MaximumTooLarge:
        // The dialog has no words of its own for a number beyond the program's reach.
        Frame::ShowErrorMessage(Runtime::Error::Overflow);
        (check == AxisRangeCheck::MinimumTooLarge ? minimum : maximum)->setFocus();
        return false;
    case AxisRangeCheck::EqualValues:
        break;
    }
    Frame::CurrentPrompts().message(
        GetResString(10020), QString(), Frame::MessageIcon::Exclamation, Frame::MessageButtons::Ok);
    minimum->setFocus();
    return false;
}

void OptionsDialog::FillColourList(QComboBox* list)
{
    list->clear();
    for (const Frame::ColourEntry& entry : Frame::Settings().ColourTable)
        list->addItem(entry.Name);
}

void OptionsDialog::SelectColourName(QComboBox* list, const QString& name)
{
    list->setCurrentIndex(list->findText(name, Qt::MatchFixedString));
}

} // namespace Ormsey

#include "sheet/ui/frmNumberFormat.h"

#include "resources/StringTable.h"
#include "sheet/ui/frmTillane.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace Tillane {

namespace {

constexpr int titleText = 1257;
constexpr int instructionsText = 1801;
constexpr int okText = 1000;
constexpr int cancelText = 1001;
constexpr int applyText = 1002;

QPushButton* Button(int textId, const QString& name)
{
    auto* button = new QPushButton(GetResString(textId));
    button->setObjectName(name);
    button->setAccessibleName(button->text().remove(u'&'));
    return button;
}

} // namespace

frmNumberFormat::frmNumberFormat(frmTillane* owner, const QString& format)
    : QDialog(owner)
    , FormOwner(owner)
{
    setObjectName(u"frmNumberFormat"_s);
    setWindowTitle(GetResString(titleText));
    lblInstructions = new QLabel(GetResString(instructionsText));
    lblInstructions->setObjectName(u"lblInstructions"_s);
    lblInstructions->setWordWrap(true);
    cmbFormat = new QComboBox;
    cmbFormat->setObjectName(u"cmbFormat"_s);
    cmbFormat->setAccessibleName(GetResString(titleText));
    cmbFormat->setEditable(true);
    cmbFormat->setInsertPolicy(QComboBox::NoInsert);
    const QStringList named { u"General"_s, u"Fixed"_s, u"Currency"_s, u"General Date"_s,
        u"Percent"_s, u"Short Date"_s, u"Medium Date"_s, u"Long Date"_s, u"Short Time"_s,
        u"Medium Time"_s, u"Long Time"_s };
    cmbFormat->addItems(named);
    cmbFormat->setCurrentText(format.isEmpty() ? u"General"_s : format);
    lblInstructions->setBuddy(cmbFormat);

    cmdOK = Button(okText, u"cmdOK"_s);
    cmdCancel = Button(cancelText, u"cmdCancel"_s);
    cmdApply = Button(applyText, u"cmdApply"_s);
    connect(cmdOK, &QPushButton::clicked, this, [this] {
        emit Applied(Format());
        accept();
    });
    connect(cmdApply, &QPushButton::clicked, this, [this] { emit Applied(Format()); });
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    cmdOK->setDefault(true);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    buttons->addWidget(cmdApply);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblInstructions);
    layout->addWidget(cmbFormat);
    layout->addLayout(buttons);
    setMinimumWidth(360);
}

QString frmNumberFormat::Format() const
{
    return cmbFormat->currentText();
}

} // namespace Tillane

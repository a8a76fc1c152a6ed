#include "sheet/ui/frmFormula.h"

#include "resources/StringTable.h"
#include "sheet/ui/frmTillane.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace Tillane {

namespace {

constexpr int titleText = 1258;
constexpr int formulaText = 1701;
constexpr int operandCompleteText = 1702;
constexpr int chooseFunctionText = 1703;
constexpr int cellInFunctionText = 1704;
constexpr int firstCellText = 1401;
constexpr int lastCellText = 1402;
constexpr int okText = 1000;
constexpr int cancelText = 1001;

// Characters a formula never needs: "!", the double quote, "#", ";" to "@", "[" to "`".
bool Refused(char16_t character)
{
    return character == u'!' || character == u'"' || character == u'#'
        || (character >= 59 && character <= 64) || (character >= 91 && character <= 96);
}

} // namespace

frmFormula::frmFormula(frmTillane* owner, CellAddress cell, const QString& formula)
    : QDialog(owner, Qt::Tool)
    , FormOwner(owner)
    , m_cell(cell)
{
    setObjectName(u"frmFormula"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(GetResString(titleText));

    lblFormula = new QLabel(GetResString(formulaText));
    lblFormula->setObjectName(u"lblFormula"_s);
    txtFormula = new QLineEdit(formula);
    txtFormula->setObjectName(u"txtFormula"_s);
    txtFormula->setAccessibleName(lblFormula->text());
    lblFormula->setBuddy(txtFormula);
    txtFormula->installEventFilter(this);

    auto* buttons = new QGridLayout;
    const QString functions[] = { u"SUM(:)"_s, u"MEAN(:)"_s };
    for (int index = 0; index < 2; ++index) {
        cmdFunction[index] = new QPushButton(functions[index]);
        cmdFunction[index]->setObjectName(u"cmdFunction%1"_s.arg(index));
        cmdFunction[index]->setAccessibleName(functions[index]);
        cmdFunction[index]->setAutoDefault(false);
        buttons->addWidget(cmdFunction[index], 0, index * 2, 1, 2);
        connect(
            cmdFunction[index], &QPushButton::clicked, this, [this, function = functions[index]] {
                InsertText(function);
                expectOperand(true);
                txtFormula->setFocus();
            });
    }
    const QString operators[] = { u"+"_s, u"-"_s, u"*"_s, u"/"_s };
    for (int index = 0; index < 4; ++index) {
        cmdOperand[index] = new QPushButton(operators[index]);
        cmdOperand[index]->setObjectName(u"cmdOperand%1"_s.arg(index));
        cmdOperand[index]->setAccessibleName(operators[index]);
        cmdOperand[index]->setAutoDefault(false);
        buttons->addWidget(cmdOperand[index], 1, index);
        connect(cmdOperand[index], &QPushButton::clicked, this, [this, text = operators[index]] {
            InsertText(text);
            expectOperand(true);
            txtFormula->setFocus();
        });
    }

    lblInstructions = new QLabel;
    lblInstructions->setObjectName(u"lblInstructions"_s);
    lblInstructions->setWordWrap(true);
    lblInstructions->setMinimumHeight(lblInstructions->fontMetrics().height() * 3);

    cmdOK = new QPushButton(GetResString(okText));
    cmdOK->setObjectName(u"cmdOK"_s);
    cmdOK->setAccessibleName(cmdOK->text());
    cmdCancel = new QPushButton(GetResString(cancelText));
    cmdCancel->setObjectName(u"cmdCancel"_s);
    cmdCancel->setAccessibleName(cmdCancel->text());
    cmdOK->setDefault(true);
    connect(cmdOK, &QPushButton::clicked, this, &frmFormula::accept);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::close);
    auto* okCancel = new QHBoxLayout;
    okCancel->addStretch();
    okCancel->addWidget(cmdOK);
    okCancel->addWidget(cmdCancel);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblFormula);
    layout->addWidget(txtFormula);
    layout->addLayout(buttons);
    layout->addWidget(lblInstructions);
    layout->addLayout(okCancel);
    setMinimumWidth(320);

    txtFormula->setCursorPosition(int(formula.size()));
    expectOperand(true);
    lblInstructions->setText(GetResString(chooseFunctionText));
}

void frmFormula::expectOperand(bool expecting)
{
    for (QPushButton* button : cmdFunction)
        button->setEnabled(expecting);
    for (QPushButton* button : cmdOperand)
        button->setEnabled(!expecting);
    cmdOK->setEnabled(!expecting);
    if (!expecting)
        lblInstructions->setText(GetResString(operandCompleteText));
}

void frmFormula::InsertText(const QString& text)
{
    QString formula = txtFormula->text();
    const int start = txtFormula->hasSelectedText() ? txtFormula->selectionStart()
                                                    : txtFormula->cursorPosition();
    formula.replace(start, txtFormula->selectedText().size(), text);
    txtFormula->setText(formula);
    qsizetype caret = formula.size();
    if (const qsizetype range = formula.indexOf(u"(:"_s); range >= 0) {
        caret = range + 1;
        lblInstructions->setText(GetResString(firstCellText));
    } else if (const qsizetype end = formula.indexOf(u":)"_s); end >= 0) {
        caret = end + 1;
        lblInstructions->setText(GetResString(lastCellText));
    } else if (const qsizetype empty = formula.indexOf(u"()"_s); empty >= 0) {
        caret = empty + 1;
        lblInstructions->setText(GetResString(cellInFunctionText));
    }
    txtFormula->setCursorPosition(int(caret));
}

void frmFormula::Cell_Click(const QString& name)
{
    InsertText(name);
    if (txtFormula->cursorPosition() == txtFormula->text().size())
        expectOperand(false);
}

bool frmFormula::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != txtFormula || event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const QString text = static_cast<QKeyEvent*>(event)->text();
    if (text.size() != 1)
        return false;
    const char16_t character = text[0].unicode();
    if (Refused(character))
        return true;
    if (QStringView(u"(*+-/:").contains(text[0]))
        expectOperand(true);
    else if (character == u')' || (character >= u'0' && character <= u'9'))
        expectOperand(false);
    return false;
}

void frmFormula::accept()
{
    QString formula = txtFormula->text().trimmed();
    // What the builder hands over is always a formula.
    if (!formula.startsWith(u'='))
        formula.prepend(u'=');
    frmTillane* owner = FormOwner;
    const CellAddress cell = m_cell;
    close();
    owner->TakeFormula(cell, formula);
}

} // namespace Tillane

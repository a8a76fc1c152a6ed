#include "sheet/ui/frmCopyCell.h"

#include "frame/Prompts.h"
#include "resources/StringTable.h"
#include "sheet/CellReferences.h"
#include "sheet/ui/frmTillane.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace Tillane {

namespace {

constexpr int titleText = 1259;
constexpr int firstCellText = 1401;
constexpr int lastCellText = 1402;
constexpr int readyText = 1403;
constexpr int oneRowOrColumnText = 1404;
constexpr int firstCellCaption = 1405; // and the last cell's after it
constexpr int okText = 1000;
constexpr int cancelText = 1001;

} // namespace

frmCopyCell::frmCopyCell(frmTillane* owner, CellAddress source)
    : QDialog(owner, Qt::Tool)
    , FormOwner(owner)
    , m_source(source)
{
    setObjectName(u"frmCopyCell"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(GetResString(titleText));

    auto* cells = new QGridLayout;
    for (int index = 0; index < 2; ++index) {
        auto* caption = new QLabel(GetResString(firstCellCaption + index));
        lblCell[index] = new QLabel;
        lblCell[index]->setObjectName(u"lblCell%1"_s.arg(index));
        lblCell[index]->setAccessibleName(caption->text());
        lblCell[index]->setFrameShape(QFrame::StyledPanel);
        lblCell[index]->setMinimumWidth(60);
        cells->addWidget(caption, 0, index * 2);
        cells->addWidget(lblCell[index], 0, index * 2 + 1);
    }
    lblInstructions = new QLabel(GetResString(firstCellText));
    lblInstructions->setObjectName(u"lblInstructions"_s);
    lblInstructions->setWordWrap(true);
    lblInstructions->setMinimumHeight(lblInstructions->fontMetrics().height() * 2);

    cmdOK = new QPushButton(GetResString(okText));
    cmdOK->setObjectName(u"cmdOK"_s);
    cmdOK->setAccessibleName(cmdOK->text());
    cmdOK->setEnabled(false);
    cmdOK->setDefault(true);
    cmdCancel = new QPushButton(GetResString(cancelText));
    cmdCancel->setObjectName(u"cmdCancel"_s);
    cmdCancel->setAccessibleName(cmdCancel->text());
    connect(cmdOK, &QPushButton::clicked, this, &frmCopyCell::accept);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::close);
    auto* okCancel = new QHBoxLayout;
    okCancel->addStretch();
    okCancel->addWidget(cmdOK);
    okCancel->addWidget(cmdCancel);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(cells);
    layout->addWidget(lblInstructions);
    layout->addLayout(okCancel);
    setMinimumWidth(300);
}

void frmCopyCell::Cell_Click(const QString& name)
{
    const std::optional<CellAddress> cell = CellFromName(name);
    if (!cell)
        return;
    if (!m_first.isValid()) {
        m_first = *cell;
        lblCell[0]->setText(name);
        lblInstructions->setText(GetResString(lastCellText));
        return;
    }
    if (cell->Row != m_first.Row && cell->Column != m_first.Column) {
        Frame::CurrentPrompts().message(GetResString(oneRowOrColumnText), QString(),
            Frame::MessageIcon::Exclamation, Frame::MessageButtons::Ok);
        return;
    }
    m_last = *cell;
    lblCell[1]->setText(name);
    lblInstructions->setText(GetResString(readyText));
    cmdOK->setEnabled(true);
    cmdOK->setFocus();
}

void frmCopyCell::accept()
{
    if (!m_first.isValid() || !m_last.isValid())
        return;
    frmTillane* owner = FormOwner;
    const CellAddress source = m_source;
    const CellAddress first = m_first;
    const CellAddress last = m_last;
    close();
    owner->CopyCell(source, first, last);
}

} // namespace Tillane

#include "sheet/ui/frmCellStyle.h"

#include "frame/Colours.h"
#include "frame/FrameSettings.h"
#include "frame/Prompts.h"
#include "resources/StringTable.h"
#include "sheet/ui/frmTillane.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace Tillane {

namespace {

constexpr int titleText = 1256;
constexpr int cellColourText = 1301;
constexpr int colourButtonText = 1302;
constexpr int lockText = 1303;
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

frmCellStyle::frmCellStyle(frmTillane* owner, qint32 colour, bool locked)
    : QDialog(owner)
    , FormOwner(owner)
{
    setObjectName(u"frmCellStyle"_s);
    setWindowTitle(GetResString(titleText));

    lblColour = new QLabel(GetResString(cellColourText));
    lblColour->setObjectName(u"lblColour"_s);
    picColour = new QLabel;
    picColour->setObjectName(u"picColour"_s);
    picColour->setAccessibleName(lblColour->text());
    picColour->setFrameShape(QFrame::Box);
    picColour->setMinimumSize(48, 24);
    picColour->setAutoFillBackground(true);
    cmbColour = new QComboBox;
    cmbColour->setObjectName(u"cmbColour"_s);
    cmbColour->setAccessibleName(lblColour->text());
    for (const Frame::ColourEntry& entry : Frame::Settings().ColourTable) {
        if (!entry.Name.isEmpty())
            cmbColour->addItem(entry.Name, entry.Value);
    }
    connect(cmbColour, &QComboBox::activated, this,
        [this](int index) { SetColour(cmbColour->itemData(index).toInt()); });
    cmdColour = Button(colourButtonText, u"cmdColour"_s);
    connect(cmdColour, &QPushButton::clicked, this, [this] {
        if (const std::optional<qint32> chosen = Frame::CurrentPrompts().colour(m_colour))
            SetColour(*chosen);
    });
    chkLock = new QCheckBox(GetResString(lockText));
    chkLock->setObjectName(u"chkLock"_s);
    chkLock->setAccessibleName(chkLock->text().remove(u'&'));
    chkLock->setChecked(locked);

    cmdOK = Button(okText, u"cmdOK"_s);
    cmdCancel = Button(cancelText, u"cmdCancel"_s);
    cmdApply = Button(applyText, u"cmdApply"_s);
    connect(cmdOK, &QPushButton::clicked, this, [this] {
        emit Applied(m_colour, chkLock->isChecked());
        accept();
    });
    connect(cmdApply, &QPushButton::clicked, this,
        [this] { emit Applied(m_colour, chkLock->isChecked()); });
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    cmdOK->setDefault(true);

    auto* colourRow = new QGridLayout;
    colourRow->addWidget(lblColour, 0, 0);
    colourRow->addWidget(picColour, 0, 1);
    colourRow->addWidget(cmbColour, 0, 2);
    colourRow->addWidget(cmdColour, 0, 3);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    buttons->addWidget(cmdApply);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(colourRow);
    layout->addWidget(chkLock);
    layout->addLayout(buttons);
    SetColour(colour);
}

void frmCellStyle::SetColour(qint32 colour)
{
    m_colour = colour;
    QPalette palette = picColour->palette();
    palette.setColor(QPalette::Window, Frame::ColourFromValue(colour));
    picColour->setPalette(palette);
    cmbColour->setCurrentIndex(cmbColour->findData(colour));
}

} // namespace Tillane

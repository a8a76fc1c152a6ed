#include "frame/ui/PrintSetupDialog.h"

#include "frame/ui/PrinterList.h"
#include "frame/ui/WidgetHelpers.h"
#include "resources/StringTable.h"

#include <QHBoxLayout>

namespace Frame {

namespace {
constexpr int captionText = 1011;
constexpr int orientationText = 1012;
constexpr int portraitText = 1013;
constexpr int landscapeText = 1014;
constexpr int printerText = 1015;
constexpr int okText = 1000;
constexpr int cancelText = 1001;
} // namespace

PrintSetupDialog::PrintSetupDialog(QWidget* owner, Orientation orientation)
    : QDialog(owner)
{
    setModal(true);
    setWindowTitle(GetResString(captionText));

    lblPrinters = new QLabel;
    lblPrinters->setProperty("Tag", printerText);
    cmbPrinters = new QComboBox;
    cmbPrinters->setMinimumWidth(260);
    lblPrinters->setBuddy(cmbPrinters);
    cmdOK = new QPushButton;
    cmdOK->setProperty("Tag", okText);
    cmdOK->setDefault(true);
    cmdCancel = new QPushButton;
    cmdCancel->setProperty("Tag", cancelText);

    auto* layout = new QVBoxLayout(this);
    auto* printerRow = new QHBoxLayout;
    printerRow->addWidget(lblPrinters);
    printerRow->addWidget(cmbPrinters, 1);
    layout->addLayout(printerRow);

    if (orientation == Orientation::Shown) {
        fmeOrientation = new QGroupBox;
        fmeOrientation->setProperty("Tag", orientationText);
        optPortrait = new QRadioButton;
        optPortrait->setProperty("Tag", portraitText);
        optPortrait->setChecked(true);
        optLandscape = new QRadioButton;
        optLandscape->setProperty("Tag", landscapeText);
        auto* orientationLayout = new QVBoxLayout(fmeOrientation);
        orientationLayout->addWidget(optPortrait);
        orientationLayout->addWidget(optLandscape);
        layout->addWidget(fmeOrientation);
    }
    m_options = new QVBoxLayout;
    layout->addLayout(m_options);
    layout->addStretch();

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    layout->addLayout(buttons);

    LocaliseControls(this);
    FillPrinterList(cmbPrinters, cmdOK);
    connect(
        cmbPrinters, &QComboBox::activated, this, [](int position) { ChoosePrinter(position); });
    // OK takes the entry shown even when the user never opened the list (the only entry, or
    // "PDF File" preselected on a machine without printers).
    connect(cmdOK, &QPushButton::clicked, this, [this] {
        ChoosePrinter(cmbPrinters->currentIndex());
        accept();
    });
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

} // namespace Frame

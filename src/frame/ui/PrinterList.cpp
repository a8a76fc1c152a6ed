#include "frame/ui/PrinterList.h"

#include "frame/FrameSettings.h"
#include "resources/StringTable.h"

#include <QPrinterInfo>

namespace Frame {

namespace {
constexpr int pdfFileText = 441;
}

void FillPrinterList(QComboBox* printerCombo, QAbstractButton* okButton)
{
    FillPrinterList(printerCombo, okButton, QPrinterInfo::availablePrinterNames(),
        CurrentPrinterName(), Settings().PrintToPdfFile);
}

void FillPrinterList(QComboBox* printerCombo, QAbstractButton* okButton,
    const QStringList& printerNames, const QString& currentPrinter, bool pdfChosen)
{
    if (printerCombo == nullptr)
        return;
    printerCombo->clear();
    for (const QString& name : printerNames) {
        printerCombo->addItem(name);
        if (!pdfChosen && name == currentPrinter)
            printerCombo->setCurrentIndex(printerCombo->count() - 1);
    }
    printerCombo->addItem(GetResString(pdfFileText));
    if (pdfChosen || printerNames.isEmpty())
        printerCombo->setCurrentIndex(printerCombo->count() - 1);
    printerCombo->setEnabled(true);
    if (okButton != nullptr)
        okButton->setEnabled(true);
}

QString CurrentPrinterName()
{
    if (Settings().PrintToPdfFile)
        return QString();
    const QString& chosen = Settings().CurrentPrinter;
    return chosen.isEmpty() ? QPrinterInfo::defaultPrinterName() : chosen;
}

void ChoosePrinter(int position)
{
    const QStringList names = QPrinterInfo::availablePrinterNames();
    if (position >= 0 && position < names.size()) {
        Settings().CurrentPrinter = names[position];
        Settings().PrintToPdfFile = false;
    } else if (position == names.size()) {
        Settings().PrintToPdfFile = true;
    }
}

} // namespace Frame

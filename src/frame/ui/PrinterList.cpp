#include "frame/ui/PrinterList.h"

#include "frame/FrameSettings.h"
#include "resources/StringTable.h"

#include <QPrinterInfo>

namespace Frame {

namespace {
constexpr int noPrintersText = 440;
}

void FillPrinterList(QComboBox* printerCombo, QAbstractButton* okButton)
{
    FillPrinterList(
        printerCombo, okButton, QPrinterInfo::availablePrinterNames(), CurrentPrinterName());
}

void FillPrinterList(QComboBox* printerCombo, QAbstractButton* okButton,
    const QStringList& printerNames, const QString& currentPrinter)
{
    if (printerCombo == nullptr)
        return;
    printerCombo->clear();
    for (const QString& name : printerNames) {
        printerCombo->addItem(name);
        if (name == currentPrinter)
            printerCombo->setCurrentIndex(printerCombo->count() - 1);
    }
    const bool anyPrinter = !printerNames.isEmpty();
    if (!anyPrinter)
        printerCombo->addItem(GetResString(noPrintersText));
    printerCombo->setEnabled(anyPrinter);
    if (okButton != nullptr)
        okButton->setEnabled(anyPrinter);
}

QString CurrentPrinterName()
{
    const QString& chosen = Settings().CurrentPrinter;
    return chosen.isEmpty() ? QPrinterInfo::defaultPrinterName() : chosen;
}

void ChoosePrinter(int position)
{
    const QStringList names = QPrinterInfo::availablePrinterNames();
    if (position >= 0 && position < names.size())
        Settings().CurrentPrinter = names[position];
}

} // namespace Frame

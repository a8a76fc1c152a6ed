#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <QString>
#include <QStringList>

// The printer choice the three print dialogs share. The program's current printer is kept
// by name in Settings().CurrentPrinter; empty means the platform's default printer.
namespace Frame {

// Lists every installed printer in the platform's order with the current printer selected;
// with none, the single entry "No Printers" (string 440). The list and `okButton` are
// enabled only when there is a printer.
void FillPrinterList(QComboBox* printerCombo, QAbstractButton* okButton);
// The same over a given list of printers, for a list that is not the platform's.
void FillPrinterList(QComboBox* printerCombo, QAbstractButton* okButton,
    const QStringList& printerNames, const QString& currentPrinter);

// The printer the program prints to: the one chosen in a print dialog during this run, else
// the platform's default (empty when there is none).
QString CurrentPrinterName();

// The user picked entry `position` of a list filled by FillPrinterList: that printer becomes
// the current one for the rest of the run. Positions outside the platform's list (the "No
// Printers" entry) change nothing.
void ChoosePrinter(int position);

} // namespace Frame

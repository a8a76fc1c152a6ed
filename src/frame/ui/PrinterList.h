#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <QString>
#include <QStringList>

// The printer choice the three print dialogs share. The program's current printer is kept
// by name in Settings().CurrentPrinter (empty: the platform's default printer), or is the
// "PDF File" entry that every list ends with, so that a machine without a printer still
// prints: into a PDF file the user names.
namespace Frame {

// Lists every installed printer in the platform's order, then "PDF File" (string 441), with
// the current choice selected. OK stays enabled: there is always somewhere to print.
void FillPrinterList(QComboBox* printerCombo, QAbstractButton* okButton);
// The same over a given list of printers, for a list that is not the platform's.
void FillPrinterList(QComboBox* printerCombo, QAbstractButton* okButton,
    const QStringList& printerNames, const QString& currentPrinter, bool pdfChosen);

// The printer the program prints to: the one chosen in a print dialog during this run, else
// the platform's default (empty when there is none, or when "PDF File" is chosen).
QString CurrentPrinterName();

// The user picked entry `position` of a list filled by FillPrinterList: that printer, or the
// PDF file after the platform's printers, becomes the current choice for the rest of the run.
// Positions outside the list change nothing.
void ChoosePrinter(int position);

} // namespace Frame

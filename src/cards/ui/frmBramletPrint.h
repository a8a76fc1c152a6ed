#pragma once

#include "frame/ui/PrintSetupDialog.h"

#include <QList>

class QGroupBox;
class QLabel;
class QLineEdit;
class QRadioButton;

namespace Bramlet {

class CardDocument;
class frmBramlet;

// What the user chose in the card print dialog: the cards by number from 1, in the order of
// the card set. The current card when nothing else is chosen.
struct CardPrintChoices
{
    bool CurrentCard = true;
    int From = 1;
    int To = 1;
};

// The card window's print dialog: the shared printer list and the range frame ("Current
// Card", or a selection From / To, filled with 1 and the number of cards). It only asks; the
// window prints what it answers.
class frmBramletPrint : public Frame::PrintSetupDialog
{
    Q_OBJECT

public:
    frmBramletPrint(CardDocument& document, QWidget* owner);

    // Shows the range for the chosen button: the current card's number in both boxes, or
    // 1 and the number of cards with the From box taking the focus; the boxes only for a
    // selection.
    void UpdateRange();
    CardPrintChoices Choices() const;

    QGroupBox* fmeRange = nullptr;
    QList<QRadioButton*> optRange;
    QList<QLabel*> lblRange;
    QList<QLineEdit*> txtRange;

protected:
    void showEvent(QShowEvent* event) override;

private:
    CardDocument& m_document;
};

// Prints the chosen cards through the window, as its current view shows them, one card to a
// page scaled to fit, on the current printer or into a PDF file; the card on show before is
// shown again afterwards. A selection outside the card set is cut to it.
void PrintCardPages(
    frmBramlet& window, const CardPrintChoices& choices, const QString& documentName);

} // namespace Bramlet

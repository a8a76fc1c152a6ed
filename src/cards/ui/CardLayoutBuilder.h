#pragma once

#include "cards/CardControl.h"

#include <QList>
#include <vector>

class QLabel;
class QWidget;

namespace Bramlet {

class CardArea;

// The fixed parts of every card, made with the window, that the bound columns CardName,
// FreeText, Picture and Keyword1..6 map to.
struct FixedCardWidgets
{
    QWidget* txtName = nullptr;
    QWidget* txtFreeText = nullptr;
    QWidget* picPicture = nullptr;
    QList<QWidget*> txtKeyWord; // six
};

// What BuildCardLayout made, by the document's control index: the widget showing each
// control (a fixed one or a new field control) and the field's separate label, if any.
struct CardWidgets
{
    std::vector<QWidget*> Controls;
    std::vector<QLabel*> Labels;
    // The field controls and labels made here, which the next layout deletes.
    QList<QWidget*> Made;
};

// Makes the field controls of a card from the document's controls, on `area`: a text box,
// date picker (with its Null box), check box (its caption the label), drop-down (the
// FieldChoices items), web-address or resource button (the address its tool tip) for each,
// at (FieldLeft, FieldTop) with width FieldWidth and the control kind's own height, and a
// label at its LabelRect; positions in twips turned into pixels at the area's resolution.
// Each widget is named after its control array and element ("txtField(3)", "lblFieldLabel(3)")
// and carries the field's label as its accessible name. Number boxes get their key filter:
// whole numbers "I", decimals and currency "R". Nothing is shown here: the view decides.
CardWidgets BuildCardLayout(
    CardArea* area, const std::vector<CardControl>& controls, const FixedCardWidgets& fixed);

// The control kinds' heights on the card, in twips.
int TemplateHeight(ControlKind kind);

} // namespace Bramlet

#include "cards/ui/frmBramletPrint.h"

#include "cards/CardDocument.h"
#include "cards/ui/CardArea.h"
#include "cards/ui/KeyFilter.h"
#include "cards/ui/frmBramlet.h"
#include "frame/ui/PrintJob.h"
#include "frame/ui/WidgetHelpers.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPicture>
#include <QRadioButton>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace Bramlet {

namespace {
constexpr int rangeText = 911;
constexpr int currentCardText = 912;
constexpr int selectionText = 913;
constexpr int fromText = 914;
constexpr int toText = 915;
} // namespace

frmBramletPrint::frmBramletPrint(CardDocument& document, QWidget* owner)
    : Frame::PrintSetupDialog(owner)
    , m_document(document)
{
    FormOwner = owner;
    setObjectName(u"frmBramletPrint"_s);
    fmeRange = new QGroupBox;
    fmeRange->setObjectName(u"fmeRange"_s);
    fmeRange->setProperty("Tag", rangeText);
    auto* grid = new QGridLayout(fmeRange);
    const int captions[] = { currentCardText, selectionText };
    const int boxCaptions[] = { fromText, toText };
    for (int index = 0; index < 2; ++index) {
        auto* option = new QRadioButton;
        option->setObjectName(u"optRange(%1)"_s.arg(index));
        option->setProperty("Tag", captions[index]);
        grid->addWidget(option, index, 0);
        optRange.append(option);
        auto* label = new QLabel;
        label->setObjectName(u"lblRange(%1)"_s.arg(index));
        label->setProperty("Tag", boxCaptions[index]);
        auto* box = new QLineEdit;
        box->setObjectName(u"txtRange(%1)"_s.arg(index));
        box->setMaxLength(5);
        box->installEventFilter(new KeyFilter(u"N"_s, box));
        label->setBuddy(box);
        grid->addWidget(label, index, 1);
        grid->addWidget(box, index, 2);
        lblRange.append(label);
        txtRange.append(box);
        connect(option, &QRadioButton::clicked, this, &frmBramletPrint::UpdateRange);
    }
    optRange[0]->setChecked(true);
    optionsLayout()->addWidget(fmeRange);
    Frame::LocaliseControls(this);
    for (int index = 0; index < 2; ++index) {
        txtRange[index]->setAccessibleName(lblRange[index]->text().remove(u':'));
        optRange[index]->setAccessibleName(optRange[index]->text().remove(u'&'));
    }
    UpdateRange();
}

void frmBramletPrint::showEvent(QShowEvent* event)
{
    Frame::PrintSetupDialog::showEvent(event);
    UpdateRange();
}

void frmBramletPrint::UpdateRange()
{
    const bool selection = optRange[1]->isChecked();
    for (int index = 0; index < 2; ++index) {
        txtRange[index]->setEnabled(selection);
        lblRange[index]->setEnabled(selection);
    }
    if (selection) {
        txtRange[0]->setText(u"1"_s);
        txtRange[1]->setText(QString::number(m_document.CardCount()));
        txtRange[0]->setFocus();
    } else {
        const QString current = QString::number(m_document.CurrentPosition() + 1);
        txtRange[0]->setText(current);
        txtRange[1]->setText(current);
    }
}

CardPrintChoices frmBramletPrint::Choices() const
{
    CardPrintChoices choices;
    choices.CurrentCard = optRange[0]->isChecked();
    choices.From = txtRange[0]->text().toInt();
    choices.To = txtRange[1]->text().toInt();
    return choices;
}

void PrintCardPages(
    frmBramlet& window, const CardPrintChoices& choices, const QString& documentName)
{
    CardDocument& document = window.Document();
    const int before = document.CurrentPosition();
    QList<int> positions;
    if (choices.CurrentCard || document.CardCount() == 0) {
        positions.append(before);
    } else {
        const int first = std::clamp(std::min(choices.From, choices.To), 1, document.CardCount());
        const int last = std::clamp(std::max(choices.From, choices.To), 1, document.CardCount());
        for (int number = first; number <= last; ++number)
            positions.append(number - 1);
    }
    Frame::PrintJob job(documentName, false);
    if (!job.begin())
        return;
    CardArea* card = window.picCard;
    // The card at its size on the screen, or smaller where the page is smaller.
    const QRectF page = job.pageArea();
    const double natural = job.printer().logicalDpiX() / double(card->logicalDpiX());
    const double scale
        = std::min({ natural, page.width() / card->width(), page.height() / card->height() });
    for (qsizetype index = 0; index < positions.size(); ++index) {
        if (index > 0)
            job.newPage();
        if (positions[index] >= 0)
            document.ShowCardAt(positions[index]);
        // Recorded first: widgets rendered straight onto a printer come out as pictures of
        // the screen, recorded they keep their text as text.
        QPicture recording;
        card->render(&recording, QPoint(), QRegion(), QWidget::DrawChildren);
        QPainter& painter = job.painter();
        painter.save();
        painter.translate(page.topLeft());
        // A recording plays back scaled from its resolution to the printer's already.
        const double played = job.printer().logicalDpiX() / double(recording.logicalDpiX());
        painter.scale(scale / played, scale / played);
        painter.drawPicture(0, 0, recording);
        painter.restore();
    }
    job.finish();
    // Back to the card on show before (a new card starts again).
    if (before >= 0)
        document.ShowCardAt(before);
    else if (!choices.CurrentCard)
        document.AddCard();
}

} // namespace Bramlet

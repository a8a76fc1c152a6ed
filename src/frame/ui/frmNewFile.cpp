#include "frame/ui/frmNewFile.h"

#include "frame/DocumentKinds.h"
#include "frame/ui/ResourceIcons.h"
#include "resources/StringTable.h"

#include <QGridLayout>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace Frame {

namespace {

constexpr int captionText = 600;
constexpr int promptText = 602;
constexpr int firstButtonText = 603;
constexpr int buttonIcons[6] = { 127, 109, 113, 111, 110, 112 };
constexpr int columns = 3;

} // namespace

frmNewFile::frmNewFile(QWidget* owner)
    : QDialog(owner)
{
    setWindowTitle(GetResString(captionText));
    setModal(true);

    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(12);
    lblSelect = new QLabel(GetResString(promptText));
    layout->addWidget(lblSelect);

    auto* grid = new QGridLayout;
    grid->setSpacing(8);
    layout->addLayout(grid);
    for (int index = 0; index < 6; ++index) {
        auto* button = new QToolButton;
        button->setObjectName(u"Command1_%1"_s.arg(index));
        // The table's captions break their two lines with CR LF; one line feed is enough here.
        button->setText(GetResString(firstButtonText + index).replace(u"\r\n"_s, u"\n"_s));
        button->setIcon(ResourceIcon(buttonIcons[index]));
        button->setIconSize(QSize(48, 48));
        button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        button->setMinimumSize(150, 110);
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
        button->setAutoRaise(false);
        // A kind whose window is not part of this build cannot be made new.
        const int docType = ButtonDocTypes[index];
        button->setEnabled(docType == 0 || IsDocumentKindRegistered(docType));
        connect(button, &QToolButton::clicked, this, [this, index] { Command1_Click(index); });
        grid->addWidget(button, index / columns, index % columns);
        Command1.append(button);
    }
}

void frmNewFile::Command1_Click(int index)
{
    m_choice = index;
    accept();
}

} // namespace Frame

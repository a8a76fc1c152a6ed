#include "frame/ui/frmAbout.h"

#include "Version.h"
#include "frame/ui/ResourceIcons.h"
#include "resources/StringTable.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace Frame {

namespace {
constexpr int aboutText = 430;
constexpr int versionText = 431;
constexpr int okText = 1000;
constexpr int programIcon = 131;
} // namespace

QString frmAbout::VersionText()
{
    return GetResString(versionText)
        + u"%1.%2.%3"_s.arg(QuorbinVersionMajor)
              .arg(QuorbinVersionMinor)
              .arg(QuorbinVersionRevision);
}

frmAbout::frmAbout(QWidget* owner)
    : QDialog(owner)
{
    const QString title = u"Quorbin"_s;
    setWindowTitle(GetResString(aboutText) + title);
    setModal(true);

    auto* icon = new QLabel;
    icon->setPixmap(ResourceIcon(programIcon).pixmap(64, 64));
    icon->setAlignment(Qt::AlignTop);

    lblTitle = new QLabel(title);
    QFont titleFont = lblTitle->font();
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.6);
    titleFont.setBold(true);
    lblTitle->setFont(titleFont);
    lblVersion = new QLabel(VersionText());

    auto* texts = new QVBoxLayout;
    texts->addWidget(lblTitle);
    texts->addWidget(lblVersion);
    texts->addStretch();

    auto* top = new QHBoxLayout;
    top->setSpacing(16);
    top->addWidget(icon);
    top->addLayout(texts, 1);

    cmdOK = new QPushButton(GetResString(okText));
    cmdOK->setDefault(true);
    connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addLayout(buttons);
    setMinimumWidth(320);
}

} // namespace Frame

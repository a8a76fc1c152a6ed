#include "graph/ui/frmGraphTools.h"

#include "resources/StringTable.h"

#include <QAction>
#include <QActionGroup>
#include <QCloseEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolBar>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace Ormsey {

frmGraphTools::frmGraphTools(QWidget* parent)
    : QDialog(parent, Qt::Tool)
{
    setObjectName(u"frmGraphTools"_s);
    setWindowTitle(GetResString(10040));
    auto* layout = new QVBoxLayout(this);
    Toolbar = new QToolBar(this);
    Toolbar->setIconSize(QSize(24, 24));
    layout->addWidget(Toolbar);

    auto* types = new QActionGroup(this);
    const QString icons[] = { u"bar-chart"_s, u"pie-chart"_s, u"line-graph"_s, u"scattergram"_s };
    for (int type = 0; type < 4; ++type) {
        QAction* button = Toolbar->addAction(
            QIcon(u":/icons/"_s + icons[type] + u".svg"_s), GetResString(555 + type));
        button->setCheckable(true);
        types->addAction(button);
        connect(button, &QAction::triggered, this, [this, type] { emit GraphTypeChanged(type); });
        TypeButtons.append(button);
    }
    Make3DButton = Toolbar->addAction(QIcon(u":/icons/make-3d.svg"_s), GetResString(559));
    Make3DButton->setCheckable(true);
    connect(Make3DButton, &QAction::triggered, this, [this](bool on) { emit Make3D(on); });
    Toolbar->addSeparator();
    OptionsButton = Toolbar->addAction(QIcon(u":/icons/options.svg"_s), GetResString(561));
    connect(OptionsButton, &QAction::triggered, this, &frmGraphTools::ShowOptions);

    layout->addWidget(new QLabel(GetResString(10041), this));
    txtGraphTitle = new QLineEdit(this);
    layout->addWidget(txtGraphTitle);
    connect(txtGraphTitle, &QLineEdit::returnPressed, this,
        [this] { emit GraphTitleChanged(txtGraphTitle->text()); });
}

void frmGraphTools::SetState(
    int graphType, bool threeDimensional, bool hasData, const QString& title)
{
    for (qsizetype type = 0; type < TypeButtons.size(); ++type)
        TypeButtons[type]->setChecked(type == graphType);
    Make3DButton->setChecked(threeDimensional);
    OptionsButton->setEnabled(hasData);
    txtGraphTitle->setText(title);
}

void frmGraphTools::closeEvent(QCloseEvent* event)
{
    emit GraphTitleChanged(txtGraphTitle->text());
    QDialog::closeEvent(event);
}

} // namespace Ormsey

#include "graph/ui/frmEditDataSeries.h"

#include "graph/Graph.h"
#include "resources/StringTable.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace Ormsey {

frmEditDataSeries::frmEditDataSeries(Graph& graph, QWidget* parent)
    : QDialog(parent)
    , m_graph(graph)
{
    setObjectName(u"frmEditDataSeries"_s);
    setWindowTitle(GetResString(10065));
    setModal(true);
    auto* layout = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    updSeries = new QSpinBox(this);
    updSeries->setRange(1, Graph::SeriesCount);
    updSeries->setValue(std::clamp(graph.NumberOfDataSeries(), 1, Graph::SeriesCount));
    auto* countLabel = new QLabel(GetResString(10066), this);
    countLabel->setBuddy(updSeries);
    form->addRow(countLabel, updSeries);
    for (int series = 1; series <= Graph::SeriesCount; ++series) {
        auto* box = new QLineEdit(graph.DataSeriesLabel(series), this);
        form->addRow(GetResString(577) + u' ' + QString::number(series) + u':', box);
        txtSeriesLabel.append(box);
    }
    layout->addLayout(form);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    auto* ok = new QPushButton(GetResString(1000), this);
    auto* cancel = new QPushButton(GetResString(1001), this);
    ok->setObjectName(u"cmdOK"_s);
    cancel->setObjectName(u"cmdCancel"_s);
    ok->setDefault(true);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    layout->addLayout(buttons);

    connect(updSeries, &QSpinBox::valueChanged, this, &frmEditDataSeries::EnableBoxes);
    connect(ok, &QPushButton::clicked, this, [this] {
        TakeChanges();
        accept();
    });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    EnableBoxes();
}

void frmEditDataSeries::EnableBoxes()
{
    for (qsizetype index = 0; index < txtSeriesLabel.size(); ++index)
        txtSeriesLabel[index]->setEnabled(index < updSeries->value());
}

void frmEditDataSeries::TakeChanges()
{
    m_graph.NumberOfDataSeries(updSeries->value());
    for (int series = 1; series <= Graph::SeriesCount; ++series)
        m_graph.DataSeriesLabel(series, txtSeriesLabel[series - 1]->text());
}

} // namespace Ormsey

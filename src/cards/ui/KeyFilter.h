#pragma once

#include <QObject>
#include <QString>

namespace Bramlet {

// The key-press filter of a number box: typed characters that NumericKeyFilter swallows in
// `mode` never reach the box ("N" digits only, "I" whole numbers, "R" decimals). Editing and
// moving keys, which type nothing, pass.
class KeyFilter : public QObject
{
    Q_OBJECT

public:
    KeyFilter(const QString& mode, QObject* parent);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QString m_mode;
};

} // namespace Bramlet

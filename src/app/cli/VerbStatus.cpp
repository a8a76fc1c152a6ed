#include "app/cli/VerbStatus.h"

using namespace Qt::Literals::StringLiterals;

namespace Cli {

int Usage(QTextStream& err, QStringView syntax, int status)
{
    err << u"usage: quorbin-cli "_s << syntax << Qt::endl;
    return status;
}

int Failure(QTextStream& err, const QString& message)
{
    err << message << Qt::endl;
    return Failed;
}

} // namespace Cli

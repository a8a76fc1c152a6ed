#include "app/cli/CommandLine.h"

#include "app/cli/CardDocumentVerbs.h"
#include "app/cli/CoreCommandLine.h"
#include "app/cli/GraphVerbs.h"
#include "app/cli/SheetVerbs.h"

namespace Cli {

bool NeedsGuiApplication(QStringView verb)
{
    return verb == u"graph" || verb == u"sheet";
}

int RunCommandLine(const QStringList& arguments, QTextStream& out, QTextStream& err)
{
    if (IsSheetVerb(arguments))
        return RunSheetVerb(arguments, out, err);
    if (IsGraphVerb(arguments))
        return RunGraphVerb(arguments, out, err);
    if (IsCardDocumentVerb(arguments))
        return RunCardDocumentVerb(arguments, out, err);
    return RunCoreCommandLine(arguments, out, err);
}

} // namespace Cli

#include "frame/LinkExecute.h"

namespace Frame {

namespace {
constexpr int invalidProcedureCall = 5;
}

LinkCommand ParseLinkExecute(QStringView executeString)
{
    LinkCommand result;
    // Positions are counted from 0 here; the loop stops one short of the end, as the scan it
    // mirrors (from 1 while below the length) never looks at the last character.
    qsizetype position = 0;
    while (position + 1 < executeString.size()) {
        if (executeString[position] != u'[') {
            result.Cancel = true;
            return result;
        }
        const qsizetype close = executeString.indexOf(u']', position);
        if (close < 0) {
            result.Cancel = true;
            return result;
        }
        const QStringView command = executeString.mid(position + 1, close - position - 1);
        position = close;
        const qsizetype open = command.indexOf(u'(');
        if (open < 0)
            continue;
        if (command.left(open).toString().toLower() != u"open")
            continue;
        // The argument ends one before the command's last character, the closing ")".
        const qsizetype length = command.size() - open - 2;
        if (length < 0) {
            result.Error = invalidProcedureCall;
            return result;
        }
        result.OpenArgument = command.mid(open + 1, length).toString();
    }
    return result;
}

} // namespace Frame

#include "app/cli/ConversionVerbs.h"

#include "app/cli/VerbStatus.h"

#include "platform/runtime/Conversions.h"
#include "platform/runtime/Dates.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Format.h"

using namespace Qt::Literals::StringLiterals;

namespace Cli {

namespace {

// These verbs came first and kept the shell's usual 2 for a usage error.
constexpr int ConversionUsageError = 2;

int usage(QTextStream& err, QStringView syntax)
{
    return Usage(err, syntax, ConversionUsageError);
}

// What a pupil's typed entry is taken to be: a number when it reads as one, else a date
// (or date and time) in the host locale, else the text itself.
Runtime::Variant TypedEntry(const QString& text)
{
    if (Runtime::IsNumeric(text))
        return Runtime::Variant(Runtime::CDbl(text));
    if (Runtime::IsDate(text))
        return Runtime::Variant::date(Runtime::CDate(text));
    return Runtime::Variant(text);
}

} // namespace

bool IsConversionVerb(const QStringList& arguments)
{
    if (arguments.isEmpty())
        return false;
    const QString& verb = arguments.first();
    return verb == u"format"_s || verb == u"val"_s || verb == u"str"_s;
}

namespace {

int runConversion(const QStringList& arguments, QTextStream& out, QTextStream& err)
{
    const QString verb = arguments.value(0);
    if (verb == u"format"_s) {
        if (arguments.size() != 3)
            return usage(err, u"format VALUE FORMAT");
        out << Runtime::Format(TypedEntry(arguments[1]), arguments[2]) << Qt::endl;
        return 0;
    }
    if (verb == u"val"_s) {
        if (arguments.size() != 2)
            return usage(err, u"val TEXT");
        out << Runtime::GeneralNumber(Runtime::Val(arguments[1])) << Qt::endl;
        return 0;
    }
    if (verb == u"str"_s) {
        if (arguments.size() != 2)
            return usage(err, u"str NUMBER");
        if (!Runtime::IsNumeric(arguments[1])) {
            err << u"quorbin-cli str: not a number: "_s << arguments[1] << Qt::endl;
            return ConversionUsageError;
        }
        out << Runtime::Str(Runtime::CDbl(arguments[1])) << Qt::endl;
        return 0;
    }
    return usage(err, u"format|val|str ...");
}

} // namespace

int RunConversionVerb(const QStringList& arguments, QTextStream& out, QTextStream& err)
{
    // A value beyond what a number can hold ("1E400") is the runtime's overflow: said on one
    // line, as for any other refused input.
    try {
        return runConversion(arguments, out, err);
    } catch (const Runtime::Error& fault) {
        err << u"quorbin-cli "_s << arguments.value(0) << u": "_s << fault.message() << Qt::endl;
        return Failed;
    }
}

} // namespace Cli

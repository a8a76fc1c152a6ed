#include "app/cli/CoreCommandLine.h"

#include "app/cli/CardVerbs.h"
#include "app/cli/ConversionVerbs.h"

using namespace Qt::Literals::StringLiterals;

namespace Cli {

QString HelpText()
{
    return uR"(usage: quorbin-cli VERB ...

Conversions, as cells, fields and counts show values:
  format VALUE FORMAT            VALUE (a number, a date, or a date and time, as typed) in
                                 FORMAT, e.g. format 0.5 "0.00" prints 0.50
  val TEXT                       the number at the start of TEXT, e.g. val "  12kg" prints 12
  str NUMBER                     NUMBER with its sign position, e.g. str 0.5 prints " .5"

Spreadsheets:
  eval EXPR                      the value of an expression, e.g. eval 1/3 prints 0.333333333333333
  sheet convert IN OUT           IN and OUT .qnc, .csv or .txt (tab-separated)
  sheet get FILE.qnc CELL        shown text, kind, value and formula of one cell
  sheet set FILE.qnc CELL TEXT   enters TEXT as typed, recalculates and saves

Graphs:
  graph convert IN OUT [--type bar|pie|line|scatter] [--bar solid|barline|histogram] [--3d]
                [--title TEXT] [--no-colour] [--legend] [--width PX]
                [--format png|emf|svg|pdf|qnp]
                                 IN .qnp or .csv (categories or x values, then up to four
                                 series; a heading row is read as labels); OUT .qnp, .emf,
                                 .png, .svg or .pdf, or the kind --format names

Card databases:
  cards new FILE.qnd [--view 2|3|4] [--labels L1,L2,...]
  cards import FILE.qnd IN.csv   first row labels, first value the card name
  cards add FILE.qnd NAME [LABEL=VALUE ...]
                                 one card, each value typed into the field of that label
  cards show FILE.qnd NAME       one line per field: label, tab, the text the card shows
  cards export FILE.qnd OUT.csv [--view 2|3|4] [--where CONDITION] [--fields L1,L2,...]
                                 the chosen fields only, by label; none: the names only
  cards find FILE.qnd CONDITION  names of the cards the condition selects
  cards info FILE.qnd            version, card count and fields
  cards compact FILE.qnd

A file of text or a picture given as "-" is standard input or output: comma-separated text
for sheet convert and the cards verbs, a graph file or comma-separated text into graph
convert, and PNG out of it unless --format says otherwise. Card files (.qnd) and the .qnc
of sheet get and set are real files.

  --help                         this text

Exit status 0 on success. A usage error exits 2 (64 for the eval, sheet, graph and
cards verbs, whose low numbers report the evaluator's error codes and failed commands).
)"_s;
}

bool IsGraphicsCommand(const QStringList& arguments)
{
    const QString verb = arguments.value(0);
    if (verb == u"cards"_s)
        return arguments.value(1) == u"add"_s || arguments.value(1) == u"show"_s;
    return verb == u"graph"_s || verb == u"sheet"_s || verb == u"eval"_s;
}

int RunCoreCommandLine(const QStringList& arguments, QTextStream& out, QTextStream& err)
{
    if (arguments.isEmpty()) {
        err << u"usage: quorbin-cli VERB ... (quorbin-cli --help lists the verbs)"_s << Qt::endl;
        return 2;
    }
    const QString& verb = arguments.first();
    if (verb == u"--help"_s || verb == u"-h"_s || verb == u"help"_s) {
        out << HelpText();
        out.flush();
        return 0;
    }
    if (IsConversionVerb(arguments))
        return RunConversionVerb(arguments, out, err);
    if (IsCardVerb(arguments))
        return RunCardVerb(arguments, out, err);
    err << u"quorbin-cli: unknown verb \""_s << verb << u"\" (quorbin-cli --help lists the verbs)"_s
        << Qt::endl;
    return 2;
}

} // namespace Cli

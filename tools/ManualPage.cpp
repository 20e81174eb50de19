// SPDX-License-Identifier: MIT
#include "tools/ManualPage.h"

#include "tools/Commands.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

const char* const kHead = R"(.TH SPOTROOSTER\-DB 1 "" "Spotrooster" "Spotrooster"
.SH NAAM
spotrooster\-db \- onderhoud van de databases van Spotrooster
.SH NAME
spotrooster\-db \- maintains the databases of Spotrooster
.SH OVERZICHT
.B spotrooster\-db
.I OPDRACHT
.RI [ WOORD ...]
.br
.B spotrooster\-db
.RI [ OPDRACHT ]
.B \-\-help
.br
.B spotrooster\-db help
.RI [ OPDRACHT ]
.SH BESCHRIJVING
Maakt, toont, controleert en wijzigt de databases van een zender, en doet zonder vensters wat
.BR spotrooster (1)
met een export of een verplaatst geluidsbestand doet.
.I BESTAND
is een gewoon pad van deze computer;
.I DATABASE
is zo'n pad of het adres van een schema op een server;
.I TABEL
is de naam van een tabel;
.I MAP
is een programmamap, die met
.IR ovalis.ini .
De opdrachten die op een zender werken, nemen
.B \-\-station
.I N
voor een zender met een nummer; zonder is dat de zender zonder nummer.
.SH OPDRACHTEN
De voorbeelden werken op de zender die
.B spotrooster\-db demo /tmp/proef
maakt.
)";

const char* const kTail = R"(.SH UITGANG
.TP
.B 0
gelukt
.TP
.B 1
mislukt; de reden staat op de foutuitvoer
.TP
.B 2
verkeerd gebruikt
.TP
.B 3
gelukt, maar iets wacht op een beslissing van een gebruiker
.SH ZIE OOK
.BR spotrooster (1)
)";

// Escapes text for troff: hyphens that can be copied, letters of any locale.
QString Escaped(const QString& text) {
  QString escaped;
  for (const QChar c : text) {
    if (c == u'\\') {
      escaped += u"\\e"_s;
    } else if (c == u'-') {
      escaped += u"\\-"_s;
    } else if (c.unicode() > 126) {
      escaped += u"\\[u%1]"_s.arg(c.unicode(), 4, 16, QChar(u'0')).toUpper().replace(u"U"_s, u"u"_s);
    } else {
      escaped += c;
    }
  }
  // A line that begins with one of these would be a request.
  static const QRegularExpression request(u"^(?=['.])"_s, QRegularExpression::MultilineOption);
  return escaped.replace(request, u"\\&"_s);
}

// Options bold, placeholders italic.
QString UsageLine(const Command& command) {
  static const QRegularExpression option(u"((?:\\\\-){2}[a-z\\\\-]+)"_s);
  static const QRegularExpression word(u"\\b([A-Z]+)\\b"_s);
  QString words = Escaped(command.usage);
  words.replace(word, u"\\fI\\1\\fR"_s).replace(option, u"\\fB\\1\\fR"_s);
  return u"\\fBspotrooster\\-db "_s + command.name + u"\\fR "_s + words;
}

QString SectionOf(const Command& command) {
  QString text =
      u".SS "_s + command.name + u'\n' + UsageLine(command) + u"\n.PP\n"_s + Escaped(command.summary) + u'\n';
  if (!command.details.isEmpty()) text += Escaped(command.details) + u'\n';
  text += u".RS\n.EX\n"_s;
  for (const QString& example : command.examples)
    text += u"spotrooster\\-db "_s + Escaped(example) + u'\n';
  return text + u".EE\n.RE\n"_s;
}

}  // namespace

void WriteManualPage(std::ostream& out) {
  out << kHead;
  for (const Command& command : AllCommands())
    out << SectionOf(command).toStdString();
  out << kTail;
}

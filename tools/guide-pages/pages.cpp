#include "guide-pages/pages.h"

#include <QRegularExpression>
#include <QTextDocument>

namespace kestrel::pages {
namespace {

/// Without what shows pictures: their lines, and the heads of tables that hold nothing else.
QString WithoutPictures(const QString& markdown) {
  QString kept;
  QStringList lines = markdown.split(u'\n');
  for (qsizetype at = 0; at < lines.size(); ++at) {
    if (lines[at].contains(QStringLiteral("!["))) continue;
    const bool head = at + 2 < lines.size() && lines[at + 1].startsWith(QStringLiteral("|--")) &&
                      lines[at + 2].contains(QStringLiteral("!["));
    if (head) {
      ++at;
      continue;
    }
    kept += lines[at] + u'\n';
  }
  return kept;
}

QString WithLinks(QString markdown, const QStringList& shipped) {
  static const QRegularExpression link(QStringLiteral(R"(\[([^\]\n]+)\]\(([A-Za-z-]+\.md)(#[a-z-]+)?\))"));
  for (QRegularExpressionMatch match = link.match(markdown); match.hasMatch(); match = link.match(markdown)) {
    QString to = match.captured(1);
    if (shipped.contains(match.captured(2))) {
      to = u'[' + to + QStringLiteral("](") + match.captured(2).chopped(3) + QStringLiteral(".html") +
           match.captured(3) + u')';
    }
    markdown.replace(match.capturedStart(), match.capturedLength(), to);
  }
  return markdown;
}

/// What a link to a heading calls it: small letters and digits, blanks as "-".
QString AnchorOf(const QString& heading) {
  QString anchor;
  for (const QChar each : heading.toLower()) {
    if (each.isLetterOrNumber() || each == u'-') anchor += each;
    if (each == u' ') anchor += u'-';
  }
  return anchor;
}

QString WithAnchors(const QString& html) {
  static const QRegularExpression heading(QStringLiteral("<h([1-6])([^>]*)>(.*?)</h\\1>"));
  static const QRegularExpression mark(QStringLiteral("<[^>]*>"));
  QString page;
  qsizetype end = 0;
  for (auto all = heading.globalMatch(html); all.hasNext();) {
    const QRegularExpressionMatch match = all.next();
    const QString level = match.captured(1), inner = match.captured(3);
    page += QStringView(html).mid(end, match.capturedStart() - end);
    page += QStringLiteral("<h%1 id=\"%2\">%3</h%1>").arg(level, AnchorOf(QString(inner).remove(mark)), inner);
    end = match.capturedEnd();
  }
  return page + html.mid(end);
}

}  // namespace

QString ToHtml(const QString& markdown, const QStringList& shipped) {
  QTextDocument document;
  document.setMarkdown(WithLinks(WithoutPictures(markdown), shipped));
  return WithAnchors(document.toHtml());
}

}  // namespace kestrel::pages

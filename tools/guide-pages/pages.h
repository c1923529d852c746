#pragma once

#include <QString>

namespace kestrel::pages {

/// A page of docs/ as HTML: without its pictures, its headings with the anchors that links to them use, and links to
/// pages among `shipped` ("settings.md") leading to their HTML; of other links to files the words alone.
QString ToHtml(const QString& markdown, const QStringList& shipped);

}  // namespace kestrel::pages

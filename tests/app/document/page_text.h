#pragma once

#include <QRegularExpression>
#include <QString>
#include <QStringList>

/// What a reader sees of a page.
namespace page_text {

/// The text of a piece of a page, without its elements.
inline QString textOf(QString html)
{
    static const QRegularExpression element(QStringLiteral("<[^>]*>"));
    html.replace(QStringLiteral("<br>"), QStringLiteral(" + ")).remove(element);
    return html.replace(QStringLiteral("&lt;"), QStringLiteral("<"))
        .replace(QStringLiteral("&gt;"), QStringLiteral(">"))
        .replace(QStringLiteral("&quot;"), QStringLiteral("\""))
        .replace(QStringLiteral("&apos;"), QStringLiteral("'"))
        .replace(QStringLiteral("&amp;"), QStringLiteral("&"))
        .simplified();
}

/// All pieces of `html` between `begin` and `end`, which are patterns.
inline QStringList pieces(const QString & html, const char * begin, const char * end)
{
    QRegularExpression form;
    form.setPattern(QStringLiteral("%1(.*?)%2").arg(QLatin1String(begin), QLatin1String(end)));
    form.setPatternOptions(QRegularExpression::DotMatchesEverythingOption);
    QStringList found;
    for (QRegularExpressionMatchIterator it = form.globalMatch(html); it.hasNext();) {
        found << it.next().captured(1);
    }
    return found;
}

/// The section whose heading has that id; empty when there is none.
inline QString section(const QString & html, const QString & id)
{
    const QByteArray begin = QStringLiteral("<section aria-labelledby=\"%1\">").arg(id).toUtf8();
    return pieces(html, begin.constData(), "</section>").value(0);
}

/// The rows of the first table in `html` below its heading, their cells with " | " between.
inline QStringList rows(const QString & html)
{
    QStringList lines;
    const QString body = pieces(html, "<tbody[^>]*>", "</tbody>").value(0);
    for (const QString & row : pieces(body, "<tr[^>]*>", "</tr>")) {
        QStringList cells;
        for (const QString & cell : pieces(row, "<t[hd] [^>]*>", "</t[hd]>")) {
            cells << textOf(cell);
        }
        lines << cells.join(QStringLiteral(" | "));
    }
    return lines;
}

/// The entries of the lists of changes in `html`.
inline QStringList changes(const QString & html)
{
    QStringList lines;
    for (const QString & entry : pieces(html, "<li class=\"[^\"]*\">", "</li>")) {
        lines << textOf(entry);
    }
    return lines;
}

} // namespace page_text

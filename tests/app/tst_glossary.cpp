// One word for one thing: the translations keep to the glossary, and to the marks of their language.

#include "support/translated_messages.h"

#include <QRegularExpression>
#include <QTest>

using support::message;

namespace {

struct term
{
    QString english;
    QString translated;
};

QRegularExpression expression(const QString & pattern)
{
    QRegularExpression result(pattern, QRegularExpression::CaseInsensitiveOption |
                                           QRegularExpression::UseUnicodePropertiesOption);
    if (!result.isValid()) {
        qFatal("%s: %s", qPrintable(pattern), qPrintable(result.errorString()));
    }
    return result;
}

/// The rows of the glossary, with what stands in `column` as the translation.
QList<term> glossary(int column)
{
    QFile file(QStringLiteral(KORVANE_SOURCE_DIR "/translations/glossary.tsv"));
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("cannot read %s", qPrintable(file.fileName()));
    }
    QList<term> result;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString & line : lines) {
        if (line.startsWith(QLatin1Char('#'))) {
            continue;
        }
        const QStringList columns = line.split(QLatin1Char('\t'));
        if (columns.size() != 3) {
            qFatal("not three columns: %s", qPrintable(line));
        }
        result.append({QStringLiteral("\\b(%1)\\b").arg(columns.at(0)), columns.at(column)});
    }
    return result;
}

/// `text` without what is no language: marks of accelerators, tags, and names that stand in quotes or are
/// code.
QString withoutCode(QString text)
{
    static const QRegularExpression code(
        QStringLiteral("'[^']*'|<[^>]*>|--\\w+|\\w+\\([^)]*\\)|\\w+\\.\\w[\\w.()]*|\\d=\\w+"));
    return text.remove(code).remove(QLatin1Char('&'));
}

/// What is wrong with the translation of `m` by the glossary's `terms`; empty when nothing is.
QStringList broken(const message & m, const QList<term> & terms)
{
    const QString source = withoutCode(m.source);
    QString translation = m.translation;
    translation.remove(QLatin1Char('&'));
    QStringList result;
    for (const term & t : terms) {
        if (source.contains(expression(t.english)) && !translation.contains(expression(t.translated))) {
            result.append(
                QStringLiteral("%1 (%2): %3 -> %4").arg(t.english, t.translated, m.source, m.translation));
        }
    }
    return result;
}

/// Words that were left behind for a better one, and marks that belong to another language.
QString unwanted(const QString & language)
{
    return language == QLatin1String("de")
               ? QStringLiteral("markier|entwicklung|schreibmarke|"
                                "(^|[\\s(„])'|\"%\\d\"|\"[^\"]*>[^\"]*\"|\\d %(?!\\d)|[“”»«]\\b")
               : QStringLiteral("répertoire|non nulle|1 à n|n à n|cet emplacement|(^|[\\s(])'|\"%\\d\"|"
                                "\"[^\"]*>[^\"]*\"| [:;?!»]|« |\\d %(?!\\d)|[“”„]");
}

} // namespace

class tst_glossary : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void translationsUseTheWordsOfTheGlossary_data() { languages(); }
    void translationsUseTheWordsOfTheGlossary();
    void everyRowIsNeeded();
    void otherWordsAreNoticed();
    void translationsHaveTheMarksOfTheirLanguage_data() { languages(); }
    void translationsHaveTheMarksOfTheirLanguage();

private:
    static void languages()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<int>("column");
        QTest::newRow("German") << QStringLiteral("de") << 1;
        QTest::newRow("French") << QStringLiteral("fr") << 2;
    }
};

void tst_glossary::translationsUseTheWordsOfTheGlossary()
{
    QFETCH(QString, language);
    QFETCH(int, column);
    const QList<term> terms = glossary(column);
    QStringList wrong;
    for (const message & m : support::readMessages(support::translationFile(language))) {
        wrong += broken(m, terms);
    }
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(QLatin1Char('\n'))));
}

/// A term that no text has would hold nothing.
void tst_glossary::everyRowIsNeeded()
{
    const QList<message> messages = support::readMessages(support::translationFile(QStringLiteral("de")));
    for (const term & t : glossary(1)) {
        const bool isUsed = std::any_of(messages.cbegin(), messages.cend(), [&t](const message & m) {
            return withoutCode(m.source).contains(expression(t.english));
        });
        QVERIFY2(isUsed, qPrintable(t.english));
    }
}

void tst_glossary::otherWordsAreNoticed()
{
    const QList<term> terms = glossary(1);
    const auto said = [&terms](const char * source, const char * translation) {
        return broken({{}, QString::fromUtf8(source), {}, QString::fromUtf8(translation), {}}, terms).size();
    };
    QCOMPARE(said("The &link table of %1", "Die Verkn&üpfungstabelle von %1"), 0);
    QCOMPARE(said("The link table of %1", "Die Zwischentabelle von %1"), 1);
    QCOMPARE(said("Tag", "Markieren"), 1);
    QCOMPARE(said("Run 'korvane tag'", "Rufen Sie ‚korvane tag‘ auf"), 0);
    QCOMPARE(said("Findings about the entity", "Funde an der Klasse"), 2);
}

void tst_glossary::translationsHaveTheMarksOfTheirLanguage()
{
    QFETCH(QString, language);
    const QRegularExpression marks = expression(unwanted(language));
    QStringList wrong;
    for (const message & m : support::readMessages(support::translationFile(language))) {
        static const QRegularExpression tags(QStringLiteral("<[^>]*>"));
        QString text = m.translation;
        const QRegularExpressionMatch match = marks.match(text.remove(tags));
        if (match.hasMatch()) {
            wrong.append(QStringLiteral("%1: %2").arg(match.captured(), m.translation));
        }
    }
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(QLatin1Char('\n'))));
}

QTEST_GUILESS_MAIN(tst_glossary)
#include "tst_glossary.moc"

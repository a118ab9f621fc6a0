// The languages: every text has a translation that fits, and the program speaks the user's language.

#include "support/translated_messages.h"

#include "app/translation.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>
#include <QTranslator>

#include <cstdio>

using support::message;
using support::readMessages;

namespace {

QStringList found(const QString & text, const char * pattern)
{
    QStringList result;
    auto it = QRegularExpression(QString::fromLatin1(pattern)).globalMatch(text);
    while (it.hasNext()) {
        result.append(it.next().captured());
    }
    result.sort();
    return result;
}

/// The contexts of what the layers below the window say.
const QStringList ReasonContexts = {"app::export_run",
                                    "app::plugin_choice",
                                    "app::project_work",
                                    "app::whole_file",
                                    "model",
                                    "plugin",
                                    "storage",
                                    "tools",
                                    "zk"};

/// What looks like a sentence and is none that people see: SQL, JavaScript, expressions, a word to
/// translators, and what stands in logs, which are English.
const char NoSentence[] =
    "SELECT|INSERT|CREATE|DELETE|INTEGER|last_enumeration_id|function|typeof|serialization error|^\\^|"
    "^the (text is too long|element '%1' is missing|count is not a number of items)$|"
    "^(unknown error|only elements are expected|an element is one too many)$|"
    "^(unsigned|long) (short|int|long|long long)$|^the words of the JSON parser$";

/// The string literals of a source file that are made of words; with `all` also those within tr() and its
/// like.
QStringList sentencesOutsideOfTr(const QString & fileName, bool all)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("cannot read %s", qPrintable(fileName));
    }
    static const QRegularExpression literals(
        QStringLiteral("(//[^\n]*|#include[^\n]*|R\"js\\(.*?\\)js\"|"
                       "\\w*(?:translate|NOOP)\\((?:[^\"()]|\"(?:[^\"\\\\]|\\\\.)*\")*)|"
                       "(\\w+)?\\(?\\s*((\"([^\"\\\\\\n]|\\\\.)*\"\\s*)+)"),
        QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression words(QStringLiteral("\\b[A-Za-z]{2,} [a-z]+ [a-z]+|^[a-z]+ [a-z]+$"));
    static const QRegularExpression noSentence(QString::fromLatin1(NoSentence));
    QStringList result;
    auto it = literals.globalMatch(QString::fromUtf8(file.readAll()));
    while (it.hasNext()) {
        const QRegularExpressionMatch match = it.next();
        QString text = match.captured(3).trimmed();
        text.remove(QRegularExpression(QStringLiteral("\"\\s*\"|^\"|\"$")));
        const bool isTranslated = match.captured(2) == QLatin1String("tr");
        if ((all || !isTranslated) && text.contains(words) && !text.contains(noSentence)) {
            result.append(text);
        }
    }
    return result;
}

/// Makes this program print one translated word in place of testing.
const QString SayFailed = QStringLiteral("--say-failed");

} // namespace

class tst_translations : public QObject
{
    Q_OBJECT

private slots:
    void everyTextIsTranslated_data() { languages(); }
    void everyTextIsTranslated();
    void translationsFit_data() { languages(); }
    void translationsFit();
    void noTextOfTheSourcesIsMissing_data() { languages(); }
    void noTextOfTheSourcesIsMissing();
    void reasonsAreTranslated_data() { languages(); }
    void reasonsAreTranslated();
    void noReasonIsLeftToOneLanguage();
    void builtFilesHoldEverything_data() { languages(); }
    void builtFilesHoldEverything();
    void theWindowSpeaksTheLanguageOfTheUser_data();
    void theWindowSpeaksTheLanguageOfTheUser();
    void commandsSpeakEnglish_data() { theWindowSpeaksTheLanguageOfTheUser_data(); }
    void commandsSpeakEnglish();

private:
    static QString printed(const QStringList & environment, const QString & program,
                           const QStringList & arguments);
    static void languages()
    {
        QTest::addColumn<QString>("language");
        QTest::newRow("French") << QStringLiteral("fr");
        QTest::newRow("German") << QStringLiteral("de");
    }
};

void tst_translations::everyTextIsTranslated()
{
    QFETCH(QString, language);
    const QList<message> messages = readMessages(support::translationFile(language));
    QVERIFY(messages.size() > 100);
    for (const message & m : messages) {
        QVERIFY2(m.type.isEmpty(), qPrintable(m.type + QStringLiteral(": ") + m.source));
        QVERIFY2(!m.translation.trimmed().isEmpty(), qPrintable(m.source));
    }
}

/// What a program puts into a text, and what it is composed of, must be there in every language.
void tst_translations::translationsFit()
{
    QFETCH(QString, language);
    const char * const patterns[] = {"%\\d+",
                                     "\\n",
                                     "^\\n",
                                     "\\n$",
                                     " $",
                                     "</?[a-z][^>]*>",
                                     "&quot;|&gt;|&lt;|&amp;",
                                     "--KorvGenericDDLExport_\\w+",
                                     "KorvGenericDDLExport\\b",
                                     "\\(F\\d+\\)",
                                     "…",
                                     "\\d=\\w+"};
    for (const message & m : readMessages(support::translationFile(language))) {
        for (const char * const pattern : patterns) {
            if (QByteArray(pattern) == "</?[a-z][^>]*>" && !m.source.startsWith(QLatin1String("<html>"))) {
                continue;
            }
            const QStringList expected = found(m.source, pattern);
            QVERIFY2(found(m.translation, pattern) == expected,
                     qPrintable(QLatin1String(pattern) + QStringLiteral(": ") + m.source +
                                QStringLiteral(" -> ") + m.translation));
        }
        if (!m.source.startsWith(QLatin1String("<html>"))) {
            QCOMPARE(m.translation.count(QLatin1Char('&')), m.source.count(QLatin1Char('&')));
        }
    }
}

void tst_translations::noTextOfTheSourcesIsMissing()
{
    QFETCH(QString, language);
    const QString lupdate = QStringLiteral(KORVANE_LUPDATE);
    if (!QFile::exists(lupdate)) {
        QSKIP("lupdate is not installed");
    }
    const QTemporaryDir folder;
    const QString fresh = folder.filePath(QStringLiteral("korvane_%1.ts").arg(language));
    QProcess process;
    process.setWorkingDirectory(QStringLiteral(KORVANE_SOURCE_DIR));
    process.start(lupdate, {"-silent", "-source-language", "en", "-target-language", language, "app", "host",
                            "plugin", "view", "-I", ".", "-ts", fresh});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 0);
    QCOMPARE(QString::fromUtf8(process.readAllStandardError()), QString());
    QSet<QString> stored;
    for (const message & m : readMessages(support::translationFile(language))) {
        stored.insert(m.id());
    }
    const QList<message> all = readMessages(fresh);
    for (const message & m : all) {
        QVERIFY2(stored.contains(m.id()), qPrintable(QStringLiteral("no translation of ") + m.id()));
    }
    QCOMPARE(stored.size(), all.size()); // nothing that the sources no longer have
}

/// What the layers below the window say must not come out as it stands in the sources.
void tst_translations::reasonsAreTranslated()
{
    QFETCH(QString, language);
    QHash<QString, int> reasons;
    for (const message & m : readMessages(support::translationFile(language))) {
        if (ReasonContexts.contains(m.context)) {
            ++reasons[m.context];
            QVERIFY2(m.translation != m.source, qPrintable(m.source));
        }
    }
    for (const QString & context : ReasonContexts) {
        QVERIFY2(reasons.value(context) > 0, qPrintable(context));
    }
}

/// A sentence in the sources of those layers that no translation can be given to.
void tst_translations::noReasonIsLeftToOneLanguage()
{
    int sentences = 0;
    for (const char * const folder : {"host/model", "host/storage", "host/zk", "host/tools", "host/plugin"}) {
        QDirIterator files(QStringLiteral(KORVANE_SOURCE_DIR "/") + QLatin1String(folder), {"*.cpp", "*.h"},
                           QDir::Files);
        while (files.hasNext()) {
            const QString name = files.next();
            sentences += int(sentencesOutsideOfTr(name, true).size());
            const QStringList left = sentencesOutsideOfTr(name, false);
            QVERIFY2(left.isEmpty(), qPrintable(name + QStringLiteral(": ") + left.join(QLatin1Char('|'))));
        }
    }
    // The very texts that tr() gets are found when tr() is not looked at.
    QVERIFY2(sentences > 100, qPrintable(QString::number(sentences)));
}

void tst_translations::builtFilesHoldEverything()
{
    QFETCH(QString, language);
    QTranslator translator;
    QVERIFY(translator.load(QStringLiteral(KORVANE_TRANSLATIONS "/korvane_%1.qm").arg(language)));
    for (const message & m : readMessages(support::translationFile(language))) {
        QCOMPARE(translator.translate(m.context.toUtf8().constData(), m.source.toUtf8().constData(),
                                      m.comment.isEmpty() ? nullptr : m.comment.toUtf8().constData()),
                 m.translation);
    }
}

void tst_translations::theWindowSpeaksTheLanguageOfTheUser_data()
{
    QTest::addColumn<QStringList>("environment");
    QTest::addColumn<QString>("text");
    const QString english = QStringLiteral("Failed");
    const QString french = QStringLiteral("Échec");
    const QString german = QStringLiteral("Fehlgeschlagen");
    QTest::newRow("nothing") << QStringList() << english;
    QTest::newRow("C") << QStringList{"LC_ALL=C.UTF-8"} << english;
    QTest::newRow("C overrules LANGUAGE and LANG")
        << QStringList{"LC_ALL=C", "LANGUAGE=de", "LANG=de_DE.UTF-8"} << english;
    QTest::newRow("English") << QStringList{"LANG=en_GB.UTF-8"} << english;
    QTest::newRow("a language that is not there") << QStringList{"LANG=ja_JP.UTF-8"} << english;
    QTest::newRow("French") << QStringList{"LANG=fr_FR.UTF-8"} << french;
    QTest::newRow("French of Canada") << QStringList{"LC_ALL=fr_CA.UTF-8"} << french;
    QTest::newRow("German") << QStringList{"LANG=de_DE.UTF-8"} << german;
    QTest::newRow("German of Austria") << QStringList{"LC_ALL=de_AT.UTF-8", "LANG=fr_FR.UTF-8"} << german;
}

/// What `program` prints in `environment`, in which nothing else says a language.
QString tst_translations::printed(const QStringList & environment, const QString & program,
                                  const QStringList & arguments)
{
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    for (const char * const name : {"LC_ALL", "LC_MESSAGES", "LANG", "LANGUAGE"}) {
        variables.remove(QString::fromLatin1(name));
    }
    for (const QString & variable : environment) {
        variables.insert(variable.section(QLatin1Char('='), 0, 0), variable.section(QLatin1Char('='), 1));
    }
    QProcess process;
    process.setProcessEnvironment(variables);
    process.start(program, arguments);
    return process.waitForFinished() && process.exitCode() == 0
               ? QString::fromUtf8(process.readAllStandardOutput())
               : QString();
}

void tst_translations::theWindowSpeaksTheLanguageOfTheUser()
{
    QFETCH(QStringList, environment);
    QFETCH(QString, text);
    // The language is chosen once in a process.
    QCOMPARE(printed(environment, QCoreApplication::applicationFilePath(), {SayFailed}), text);
}

void tst_translations::commandsSpeakEnglish()
{
    QFETCH(QStringList, environment);
    const QString output = printed(environment, QStringLiteral(KORVANE_PROGRAM), {QStringLiteral("plugins")});
    QVERIFY2(output.contains(
                 QStringLiteral("This plugin exports current opened project to a DDL SQL script file.")),
             qPrintable(output));
}

int main(int argc, char ** argv)
{
    QCoreApplication application(argc, argv);
    if (application.arguments().value(1) == SayFailed) {
        app::speakLanguageOfUser();
        const QString word = QCoreApplication::translate("app::message_panel", "Failed");
        std::fputs(word.toUtf8().constData(), stdout);
        return 0;
    }
    tst_translations test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_translations.moc"

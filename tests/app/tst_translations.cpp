// The languages: every text has a translation that fits, and the program speaks the user's language.

#include "app/translation.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>
#include <QTranslator>
#include <QXmlStreamReader>

#include <cstdio>

namespace {

struct message
{
    QString context;
    QString source;
    QString comment;
    QString translation;
    QString type;

    [[nodiscard]] QString id() const
    {
        return context + QLatin1Char('|') + comment + QLatin1Char('|') + source;
    }
};

QList<message> readMessages(const QString & fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("cannot read %s", qPrintable(fileName));
    }
    QList<message> result;
    QXmlStreamReader xml(&file);
    QString context;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        if (xml.name() == QLatin1String("name")) {
            context = xml.readElementText();
        } else if (xml.name() == QLatin1String("message")) {
            result.append({context, {}, {}, {}, {}});
        } else if (xml.name() == QLatin1String("source")) {
            result.last().source = xml.readElementText();
        } else if (xml.name() == QLatin1String("comment")) {
            result.last().comment = xml.readElementText();
        } else if (xml.name() == QLatin1String("translation")) {
            result.last().type = xml.attributes().value(QLatin1String("type")).toString();
            result.last().translation = xml.readElementText(QXmlStreamReader::IncludeChildElements);
        }
    }
    if (xml.hasError()) {
        qFatal("%s: %s", qPrintable(fileName), qPrintable(xml.errorString()));
    }
    return result;
}

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

/// Makes this program print one translated word in place of testing.
const QString SayFailed = QStringLiteral("--say-failed");

QString sourceFile(const QString & language)
{
    return QStringLiteral(KORVANE_SOURCE_DIR "/translations/korvane_%1.ts").arg(language);
}

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
    const QList<message> messages = readMessages(sourceFile(language));
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
                                     "'KorvGenericDDLExport'",
                                     "\\(F\\d+\\)",
                                     "…",
                                     "\\d=\\w+"};
    for (const message & m : readMessages(sourceFile(language))) {
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
    for (const message & m : readMessages(sourceFile(language))) {
        stored.insert(m.id());
    }
    const QList<message> all = readMessages(fresh);
    for (const message & m : all) {
        QVERIFY2(stored.contains(m.id()), qPrintable(QStringLiteral("no translation of ") + m.id()));
    }
    QCOMPARE(stored.size(), all.size()); // nothing that the sources no longer have
}

void tst_translations::builtFilesHoldEverything()
{
    QFETCH(QString, language);
    QTranslator translator;
    QVERIFY(translator.load(QStringLiteral(KORVANE_TRANSLATIONS "/korvane_%1.qm").arg(language)));
    for (const message & m : readMessages(sourceFile(language))) {
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

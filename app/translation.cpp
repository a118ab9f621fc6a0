#include "app/translation.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace app {

namespace {

void load(const QLocale & locale, const QString & name, const QString & folder)
{
    auto * const translator = new QTranslator(QCoreApplication::instance());
    if (!translator->load(locale, name, QStringLiteral("_"), folder) ||
        !QCoreApplication::installTranslator(translator)) {
        delete translator;
    }
}

/// Whether the environment asks for "C", as scripts do to get the same texts everywhere; LANGUAGE does not
/// overrule that.
bool isNeutralLocale()
{
    for (const char * const name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (const QByteArray value = qgetenv(name); !value.isEmpty()) {
            return value == "C" || value.startsWith("C.") || value == "POSIX";
        }
    }
    return false;
}

} // namespace

void speakLanguageOfUser()
{
    if (isNeutralLocale()) {
        return;
    }
    const QLocale locale = QLocale::system();
    load(locale, QStringLiteral("qtbase"), QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    load(locale, QStringLiteral("korvane"),
         QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral(KORVANE_TRANSLATIONS)));
}

} // namespace app

#include "tools/script_file.h"

#include "tools/texts.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStringDecoder>

namespace tools {

namespace {

constexpr qint64 LargestScript = qint64(16) * 1024 * 1024;

// What the script's program ends with: its value is the function to call.
const char Function[] = "typeof exportStep === 'function' ? exportStep : undefined";
// With a debugger also one that evaluates text where the script's own names are visible, and other ones.
const char FunctionAndEvaluator[] =
    "[typeof exportStep === 'function' ? exportStep : undefined, function () {"
    " return eval('(function (' + arguments[0].join(',') + ') { return eval(arguments[arguments.length - "
    "1]); })').apply(undefined, arguments[1].concat([arguments[2]])); }]";

} // namespace

std::optional<QString> readScript(const QString & fileName, QString & reason)
{
    const QFileInfo info(fileName);
    if (!info.exists()) {
        reason = texts::tr("the file does not exist");
        return {};
    }
    if (!info.isFile()) {
        reason =
            info.isDir() ? texts::tr("it is a folder, not a file") : texts::tr("it is not a regular file");
        return {};
    }
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        reason = file.errorString();
        return {};
    }
    const QByteArray bytes = file.read(LargestScript + 1);
    if (file.error() != QFileDevice::NoError) {
        reason = file.errorString();
        return {};
    }
    if (bytes.size() > LargestScript) {
        reason = texts::tr("it is larger than %1 MiB").arg(LargestScript / 1024 / 1024);
        return {};
    }
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(bytes);
    if (decoder.hasError()) {
        reason = texts::tr("it is not UTF-8 text");
        return {};
    }
    return text;
}

int lineOfFunction(const QString & source)
{
    static const QRegularExpression definition(
        QStringLiteral("function\\s+exportStep\\b|\\bexportStep\\s*="));
    const qsizetype at = source.indexOf(definition);
    return at < 0 ? 0 : static_cast<int>(QStringView(source).left(at).count(QLatin1Char('\n'))) + 1;
}

QString programOf(const QString & source, bool forDebugger)
{
    // The look-up belongs to the same program: what const or let bound is visible nowhere else.
    return source + QStringLiteral("\n;") +
           QString::fromLatin1(forDebugger ? FunctionAndEvaluator : Function);
}

} // namespace tools

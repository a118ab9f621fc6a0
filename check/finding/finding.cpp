#include "check/finding/finding.h"

#include <QCryptographicHash>

#include <algorithm>
#include <iterator>

namespace check {

namespace {

// In the order of their enumerations.
constexpr QLatin1String SeverityWords[] = {QLatin1String("note"), QLatin1String("warning"),
                                           QLatin1String("error")};
constexpr QLatin1String EffectWords[] = {QLatin1String("refused"), QLatin1String("loss"),
                                         QLatin1String("silent"),  QLatin1String("differs"),
                                         QLatin1String("blocks"),  QLatin1String("advice")};
constexpr const char * PatchWords[] = {"test", "add", "replace", "remove", "move"};
constexpr QLatin1String OccasionWords[] = {QLatin1String("always"), QLatin1String("rows")};

} // namespace

nlohmann::ordered_json jsonOf(const std::vector<patch_operation> & patch)
{
    using kind = patch_operation::kind;
    nlohmann::ordered_json list;
    for (const patch_operation & each : patch) {
        nlohmann::ordered_json made;
        made["op"] = PatchWords[static_cast<std::size_t>(each.what)];
        if (each.what == kind::move) {
            made["from"] = each.from.toStdString();
        }
        made["path"] = each.path.toStdString();
        if (each.what != kind::move && each.what != kind::remove) {
            made["value"] = each.value;
        }
        list.push_back(std::move(made));
    }
    return list;
}

summary summaryOf(const report & of)
{
    summary counted;
    for (const finding & each : of.findings) {
        if (each.accepted) {
            ++counted.accepted;
        } else {
            ++(each.weight == severity::error     ? counted.errors
               : each.weight == severity::warning ? counted.warnings
                                                  : counted.notes);
        }
    }
    return counted;
}

QString briefText(const finding & of)
{
    const QString weight = of.accepted ? QStringLiteral("accepted") : QString(wordOf(of.weight));
    return QStringLiteral("%1 %2: %3").arg(of.code, weight, of.message);
}

bool isWorse(const finding & a, const finding & b)
{
    const auto rank = [](const finding & of) { return of.accepted ? -1 : static_cast<int>(of.weight); };
    return rank(a) > rank(b);
}

QLatin1String wordOf(severity weight)
{
    return SeverityWords[static_cast<std::size_t>(weight)];
}

QLatin1String wordOf(effect what)
{
    return EffectWords[static_cast<std::size_t>(what)];
}

QLatin1String wordOf(occasion when)
{
    return OccasionWords[static_cast<std::size_t>(when)];
}

std::optional<severity> severityOf(const QString & word)
{
    const auto * const found = std::find(std::begin(SeverityWords), std::end(SeverityWords), word);
    return found == std::end(SeverityWords)
               ? std::nullopt
               : std::optional(static_cast<severity>(std::distance(std::begin(SeverityWords), found)));
}

QString counted(qsizetype count, QLatin1String what)
{
    return QString::number(count) + u' ' + what + QLatin1String(count == 1 ? "" : "s");
}

QString wordsOf(const summary & of)
{
    return QStringList{counted(of.errors, wordOf(severity::error)),
                       counted(of.warnings, wordOf(severity::warning)),
                       counted(of.notes, wordOf(severity::note))}
        .join(QStringLiteral(", "));
}

QString fingerprintOf(const finding & of)
{
    QByteArray text;
    constexpr qsizetype UsualSize = 128;
    text.reserve(UsualSize);
    const auto add = [&text](QLatin1String word) { text.append(word.data(), word.size()); };
    add(of.code);
    text.append(' ').append(of.database.toUtf8());
    if (of.statement) {
        text.append(' ');
        add(plugin::actionName(of.statement->action));
    }
    for (const object & each : of.objects) {
        text.append(' ');
        add(model::kindName(each.kind));
        text.append(QByteArray::number(static_cast<qlonglong>(each.id)));
    }
    const QByteArray hash = QCryptographicHash::hash(text, QCryptographicHash::Sha256);
    return QString::fromLatin1(hash.first(8).toHex());
}

} // namespace check

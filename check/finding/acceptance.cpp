#include "check/finding/acceptance.h"

#include "check/finding/rule.h"

#include <algorithm>
#include <functional>
#include <initializer_list>
#include <set>
#include <vector>

namespace check {

namespace {

using json = nlohmann::json;
using zk::ZkBool;

const rule_text Unmatched = {
    QLatin1String("KV806"), effect::advice, "{file}: an entry about {code} matches no finding ({why}).",
    "What it accepted is gone, or has another id, database or step.", "Take the entry out, or mend it."};

const rule_text Expired = {QLatin1String("KV807"), effect::advice,
                           "{file}: the entry about {code} ended on {until} ({why}).",
                           "It accepted the finding for a time only, so that somebody looks at it again.",
                           "Mend what was accepted, or give the entry a new date."};

QString textOf(const json & value)
{
    return QString::fromStdString(value.get<std::string>());
}

/// Reads the fields of an acceptance file and says what is wrong with them.
class acceptance_reader
{
public:
    acceptance_reader(const QString & file, accepted_findings & read) : m_file(file), m_read(read) {}

    ZkBool read(const json & whole)
    {
        if (!whole.is_object()) {
            return wrong(QStringLiteral("it has to be an object with \"accept\" and \"severity\""));
        }
        for (const auto & [name, value] : whole.items()) {
            const bool isAccept = name == "accept";
            if (!isAccept && name != "severity") {
                return wrong(unknownField(name, {"accept", "severity"}));
            }
            if (const ZkBool part = isAccept ? readEntries(value) : readSeverities(value); !part) {
                return part;
            }
        }
        return ZkBool::success();
    }

private:
    [[nodiscard]] ZkBool wrong(const QString & reason) const
    {
        return ZkBool::failure(m_file + QStringLiteral(": ") + reason);
    }

    static QString unknownField(const std::string & name, std::initializer_list<const char *> known)
    {
        QStringList names;
        for (const char * const each : known) {
            names += QString::fromLatin1(each);
        }
        return QStringLiteral("unknown field \"%1\"; there are %2")
            .arg(QString::fromStdString(name), names.join(QStringLiteral(", ")));
    }

    ZkBool readSeverities(const json & value)
    {
        if (!value.is_object()) {
            return wrong(QStringLiteral("\"severity\" has to be an object of codes and severities"));
        }
        for (const auto & [code, word] : value.items()) {
            if (const QString why = whyNoCode(QString::fromStdString(code)); !why.isEmpty()) {
                return wrong(QStringLiteral("\"severity\": ") + why);
            }
            const std::optional<severity> weight = word.is_string() ? severityOf(textOf(word)) : std::nullopt;
            if (!weight) {
                return wrong(QStringLiteral("\"severity\": %1 is error, warning or note")
                                 .arg(QString::fromStdString(code)));
            }
            m_read.severities.insert(QString::fromStdString(code), *weight);
        }
        return ZkBool::success();
    }

    static QString whyNoCode(const QString & code)
    {
        return ruleOf(code) == nullptr
                   ? QStringLiteral("there is no rule %1; 'korvane check --list' lists them").arg(code)
                   : QString();
    }

    ZkBool readEntries(const json & value)
    {
        if (!value.is_array()) {
            return wrong(QStringLiteral("\"accept\" has to be a list"));
        }
        for (std::size_t i = 0; i < value.size(); ++i) {
            accepted_entry entry;
            if (const QString why = readEntry(value[i], entry); !why.isEmpty()) {
                return wrong(QStringLiteral("entry %1 of \"accept\": %2").arg(QString::number(i + 1), why));
            }
            m_read.entries.push_back(entry);
        }
        return ZkBool::success();
    }

    /// Why the entry is wrong; empty when it is right.
    static QString readEntry(const json & value, accepted_entry & entry)
    {
        if (!value.is_object()) {
            return QStringLiteral("it has to be an object");
        }
        for (const auto & [name, field] : value.items()) {
            if (const QString why = readField(name, field, entry); !why.isEmpty()) {
                return why;
            }
        }
        if (entry.code.isEmpty() || entry.why.trimmed().isEmpty()) {
            return QStringLiteral("\"%1\" is missing").arg(entry.code.isEmpty() ? "code" : "why");
        }
        return whyNoCode(entry.code);
    }

    static QString readField(const std::string & name, const json & field, accepted_entry & entry)
    {
        static const std::pair<const char *, QString accepted_entry::*> Texts[] = {
            {"code", &accepted_entry::code},
            {"database", &accepted_entry::database},
            {"step", &accepted_entry::step},
            {"why", &accepted_entry::why}};
        static const std::pair<const char *, long accepted_entry::*> Ids[] = {
            {"entity", &accepted_entry::entity},
            {"property", &accepted_entry::property},
            {"relationship", &accepted_entry::relationship}};
        const QString shown = QString::fromStdString(name);
        for (const auto & [known, member] : Texts) {
            if (name == known) {
                entry.*member = field.is_string() ? textOf(field) : QString();
                return field.is_string() ? QString() : QStringLiteral("\"%1\" has to be a text").arg(shown);
            }
        }
        for (const auto & [known, member] : Ids) {
            if (name == known) {
                const bool isId = field.is_number_integer() && field.get<long>() > 0;
                entry.*member = isId ? field.get<long>() : 0;
                return isId ? QString() : QStringLiteral("\"%1\" has to be an id").arg(shown);
            }
        }
        if (name != "until") {
            return unknownField(
                name, {"code", "entity", "property", "relationship", "database", "step", "why", "until"});
        }
        entry.until = field.is_string() ? QDate::fromString(textOf(field), Qt::ISODate) : QDate();
        return entry.until.isValid() ? QString()
                                     : QStringLiteral("\"until\" has to be a date such as 2027-01-31");
    }

    const QString & m_file;
    accepted_findings & m_read;
};

bool hasObject(const finding & of, model::object_kind kind, long id)
{
    return id == 0 || std::any_of(of.objects.begin(), of.objects.end(),
                                  [&](const object & each) { return each.kind == kind && each.id == id; });
}

bool matches(const accepted_entry & entry, const finding & of)
{
    return entry.code == of.code && (entry.database.isEmpty() || entry.database == of.database) &&
           (entry.step.isEmpty() || entry.step == of.step) &&
           hasObject(of, model::object_kind::entity, entry.entity) &&
           hasObject(of, model::object_kind::property, entry.property) &&
           hasObject(of, model::object_kind::relationship, entry.relationship);
}

/// Whether what the entry names was judged at all.
bool wasJudged(const accepted_entry & entry, const report & in)
{
    return std::any_of(in.runs.begin(), in.runs.end(), [&](const run & each) {
        return (entry.database.isEmpty() || entry.database == each.database) &&
               (entry.step.isEmpty() || entry.step == each.step);
    });
}

finding tellEntry(const rule_text & about, const accepted_findings & by, const accepted_entry & entry)
{
    finding told = findingOf(about, {{QStringLiteral("file"), by.file},
                                     {QStringLiteral("code"), entry.code},
                                     {QStringLiteral("until"), entry.until.toString(Qt::ISODate)},
                                     {QStringLiteral("why"), entry.why}});
    told.database = entry.database;
    told.fingerprint = fingerprintOf(told);
    return told;
}

/// What follows from an accepted refusal is accepted with it.
void acceptConsequences(report & in)
{
    for (finding & each : in.findings) {
        if (each.consequenceOf >= 0 && !each.accepted) {
            each.accepted = in.findings.at(static_cast<std::size_t>(each.consequenceOf)).accepted;
        }
    }
}

/// Sees the names of fields while a text is read, and keeps one that an object has twice: of these a reader
/// would take the last alone.
class repeated_fields
{
public:
    bool operator()(int, json::parse_event_t event, json & value)
    {
        if (event == json::parse_event_t::object_start) {
            m_open.emplace_back();
        } else if (event == json::parse_event_t::object_end) {
            m_open.pop_back();
        } else if (event == json::parse_event_t::key && !m_open.back().insert(textOf(value)).second) {
            m_found = textOf(value);
        }
        return true;
    }
    [[nodiscard]] const QString & found() const { return m_found; }

private:
    std::vector<std::set<QString>> m_open;
    QString m_found;
};

} // namespace

ZkBool readAcceptance(const QByteArray & text, const QString & file, accepted_findings & read)
{
    accepted_findings found;
    found.file = file;
    try {
        repeated_fields repeated;
        const json whole = json::parse(text.constData(), text.constData() + text.size(), std::ref(repeated));
        if (!repeated.found().isEmpty()) {
            return ZkBool::failure(
                QStringLiteral("%1: the field \"%2\" is given twice").arg(file, repeated.found()));
        }
        const ZkBool taken = acceptance_reader(file, found).read(whole);
        if (taken) {
            read = std::move(found);
        }
        return taken;
    } catch (const json::exception & error) {
        const QByteArray before =
            text.left(static_cast<qsizetype>(dynamic_cast<const json::parse_error *>(&error) != nullptr
                                                 ? static_cast<const json::parse_error &>(error).byte
                                                 : 0));
        return ZkBool::failure(
            QStringLiteral("%1: line %2: is not JSON").arg(file, QString::number(before.count('\n') + 1)));
    }
}

void accept(const accepted_findings & by, const QDate & today, report & in)
{
    for (finding & each : in.findings) {
        each.weight = by.severities.value(each.code, each.weight);
    }
    std::vector<finding> own;
    for (const accepted_entry & entry : by.entries) {
        const bool isExpired = entry.until.isValid() && entry.until < today;
        bool isMatched = false;
        for (finding & each : in.findings) {
            if (matches(entry, each)) {
                isMatched = true;
                if (!isExpired) {
                    each.accepted = acceptance{entry.why, entry.until.toString(Qt::ISODate)};
                }
            }
        }
        if (isExpired) {
            own.push_back(tellEntry(Expired, by, entry));
        } else if (!isMatched && wasJudged(entry, in)) {
            own.push_back(tellEntry(Unmatched, by, entry));
        }
    }
    acceptConsequences(in);
    for (finding & each : own) {
        each.weight = by.severities.value(each.code, each.weight);
        in.findings.push_back(std::move(each));
    }
}

} // namespace check

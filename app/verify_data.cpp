// What was proven, for programs: JSON and JUnit.

#include "app/verify_reports.h"

#include "check/report/json_parts.h"

#include <QMap>
#include <QXmlStreamWriter>

#include <algorithm>

namespace app {

namespace {

using check::json;
using check::textOf;

json orNull(const QString & text)
{
    return text.isEmpty() ? json(nullptr) : textOf(text);
}

json refusedOf(const std::vector<verified_refusal> & refused)
{
    json list = json::array();
    for (const verified_refusal & each : refused) {
        list.push_back({{"statement", check::statementOf(each.place)},
                        {"when", each.withRows ? "rows" : "always"},
                        {"error", textOf(each.words)},
                        {"code", textOf(each.code)},
                        {"foretoldBy", orNull(each.foretoldBy)}});
    }
    return list;
}

json comparisonOf(const std::vector<verified_difference> & differences)
{
    json list = json::array();
    for (const verified_difference & each : differences) {
        list.push_back({{"version", textOf(each.version)},
                        {"object", textOf(each.object)},
                        {"expected", textOf(each.expected)},
                        {"found", textOf(each.found)},
                        {"explainedBy", orNull(each.explainedBy)}});
    }
    return {{"equal", differences.empty()}, {"differences", std::move(list)}};
}

json rowsOf(const database_proof & of)
{
    json lost = json::array();
    for (const lost_value & each : of.lost) {
        lost.push_back({{"object", textOf(each.object)},
                        {"version", textOf(each.version)},
                        {"value", textOf(each.value)},
                        {"explainedBy", orNull(each.explainedBy)}});
    }
    json empty = json::array();
    for (const QString & each : of.emptyTables) {
        empty.push_back(textOf(each));
    }
    return {{"values", of.values},
            {"kept", of.kept},
            {"lost", std::move(lost)},
            {"emptyTables", std::move(empty)}};
}

json runOf(const database_proof & of)
{
    return {{"database", textOf(of.database)},
            {"server", orNull(of.server)},
            {"missing", orNull(of.missing)},
            {"full", {{"statements", of.fullStatements}, {"refused", refusedOf(of.fullRefused)}}},
            {"chain", {{"statements", of.chainStatements}, {"refused", refusedOf(of.chainRefused)}}},
            {"chainEqualsFull", comparisonOf(of.chainDifferences)},
            {"fullEqualsModel", comparisonOf(of.modelDifferences)},
            {"rows", rowsOf(of)},
            {"foretold", {{"refused", of.refused}, {"foretold", of.foretold}, {"false", of.falseAlarms}}},
            {"ok", of.isOk()}};
}

/// The cases of a suite: what failed, by name; none for one that passed.
using cases = QMap<QString, QStringList>;

void addCases(const std::vector<verified_refusal> & refused, cases & all)
{
    for (const verified_refusal & each : refused) {
        if (each.foretoldBy.isEmpty()) {
            all[each.place.script] += QStringLiteral("line %1: refused, not foretold: %2 %3")
                                          .arg(QString::number(each.place.line), each.code, each.words);
        }
    }
}

void addCases(const std::vector<verified_difference> & differences, const QString & what, cases & all)
{
    for (const verified_difference & each : differences) {
        if (each.explainedBy.isEmpty()) {
            all[what] += QStringLiteral("%1: %2: expected '%3', found '%4'")
                             .arg(each.version, each.object, each.expected, each.found);
        }
    }
}

cases casesOf(const database_proof & of)
{
    cases all;
    for (const QString & script : of.scripts) {
        all.insert(script, {});
    }
    all.insert(QStringLiteral("history = full"), {});
    all.insert(QStringLiteral("full = foretold"), {});
    all.insert(QStringLiteral("rows"), {});
    addCases(of.fullRefused, all);
    addCases(of.chainRefused, all);
    addCases(of.chainDifferences, QStringLiteral("history = full"), all);
    addCases(of.modelDifferences, QStringLiteral("full = foretold"), all);
    for (const lost_value & each : of.lost) {
        if (each.explainedBy.isEmpty()) {
            all[QStringLiteral("rows")] +=
                QStringLiteral("%1: the value '%2' is not there").arg(each.object, each.value);
        }
    }
    return all;
}

void writeSuite(const database_proof & of, QXmlStreamWriter & xml)
{
    const cases all = of.missing.isEmpty() ? casesOf(of) : cases{{QStringLiteral("server"), {}}};
    const auto failed =
        std::count_if(all.begin(), all.end(), [](const QStringList & why) { return !why.isEmpty(); });
    xml.writeStartElement(QStringLiteral("testsuite"));
    xml.writeAttribute(QStringLiteral("name"), of.database);
    xml.writeAttribute(QStringLiteral("tests"), QString::number(all.size()));
    xml.writeAttribute(QStringLiteral("failures"), QString::number(failed));
    xml.writeAttribute(QStringLiteral("skipped"),
                       of.missing.isEmpty() ? QStringLiteral("0") : QStringLiteral("1"));
    for (auto each = all.begin(); each != all.end(); ++each) {
        xml.writeStartElement(QStringLiteral("testcase"));
        xml.writeAttribute(QStringLiteral("classname"), QStringLiteral("korvane.") + of.database);
        xml.writeAttribute(QStringLiteral("name"), each.key());
        if (!of.missing.isEmpty()) {
            xml.writeEmptyElement(QStringLiteral("skipped"));
            xml.writeAttribute(QStringLiteral("message"), of.missing);
        } else if (!each->isEmpty()) {
            xml.writeStartElement(QStringLiteral("failure"));
            xml.writeAttribute(QStringLiteral("message"), each->constFirst());
            xml.writeCharacters(each->join(u'\n'));
            xml.writeEndElement();
        }
        xml.writeEndElement();
    }
    xml.writeEndElement();
}

} // namespace

QByteArray verifyJson(const verification & of, const QString & program)
{
    json runs = json::array();
    for (const database_proof & each : of.proofs) {
        runs.push_back(runOf(each));
    }
    return check::written({{"format", "korvane.verify"},
                           {"formatVersion", 1},
                           {"program", textOf(program)},
                           {"project", textOf(of.project)},
                           {"runs", std::move(runs)},
                           {"ok", of.isOk()}});
}

QByteArray verifyJunit(const verification & of)
{
    QByteArray bytes;
    QXmlStreamWriter xml(&bytes);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("testsuites"));
    xml.writeAttribute(QStringLiteral("name"), QStringLiteral("korvane verify ") + of.project);
    for (const database_proof & each : of.proofs) {
        writeSuite(each, xml);
    }
    xml.writeEndDocument();
    return bytes;
}

} // namespace app

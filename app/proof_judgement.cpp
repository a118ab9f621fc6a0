#include "app/proof_judgement.h"

#include "app/foretold_statements.h"

#include <QSet>

#include <algorithm>

namespace app {

namespace {

using database::server::row_content;
using rows_of_run = std::optional<row_content>;

class proof_judge
{
public:
    proof_judge(const std::vector<version_scripts> & versions, const foretold_statements & foretold, int from,
                database_proof & proof)
        : m_versions(versions), m_foretold(foretold), m_from(from), m_proof(proof)
    {
    }

    void judgeFull(const std::vector<proof_result> & full)
    {
        for (std::size_t i = 0; i < full.size(); ++i) {
            for (const check::schema_difference & each : full[i].differences.front()) {
                add(each, i, QString());
            }
        }
        m_proof.fullRefused = refusalsOf(full.back(), std::nullopt);
    }

    /// A history that is compared with new databases.
    void judgeHistory(const proof_result & of, const std::vector<proof_result> & full, rows_of_run rows)
    {
        m_proof.chainRefused = refusalsOf(of, rows);
        addDifferences(of, QStringLiteral("after the history, "));
        QSet<QString> told;
        for (std::size_t i = 0; i < of.held.size(); ++i) {
            compareWithNew(full[i].held.front(), of.held[i], i, told);
        }
    }

    /// A history with rows that make something else of it: what is told already is not told again.
    void judgeRows(const proof_result & of, row_content rows)
    {
        for (verified_refusal & each : refusalsOf(of, rows)) {
            const auto isSame = [&each](const verified_refusal & other) {
                return other.place.script == each.place.script && other.place.line == each.place.line;
            };
            if (std::none_of(m_proof.chainRefused.begin(), m_proof.chainRefused.end(), isSame)) {
                m_proof.chainRefused.push_back(std::move(each));
            }
        }
        addDifferences(of, rows == row_content::nulls ? QStringLiteral("after the history with nulls, ")
                                                      : QStringLiteral("after the history with rows, "));
    }

    void judgeValues(const verified_values & of)
    {
        for (const QString & each : of.emptyTables) {
            if (!m_proof.emptyTables.contains(each)) {
                m_proof.emptyTables += each;
            }
        }
        m_proof.values += of.values;
        m_proof.kept += of.values - static_cast<int>(of.lost.size());
        for (const verified_values::value & each : of.lost) {
            m_proof.lost.push_back(
                {each.version, each.name, each.text, m_foretold.loss(each.entity, each.property)});
        }
    }

private:
    [[nodiscard]] bool isTold(std::size_t version) const { return static_cast<int>(version) + 1 >= m_from; }

    /// What was refused, which is counted as well.
    std::vector<verified_refusal> refusalsOf(const proof_result & of, rows_of_run rows)
    {
        std::vector<verified_refusal> refused;
        // Codes of what values refused though the check goes on as if it ran, and of what follows from that.
        std::vector<QString> byValues(of.statements.size());
        bool isOtherwise = false;
        for (std::size_t i = 0; i < of.statements.size(); ++i) {
            const statement_result & each = of.statements[i];
            QString code = m_foretold.refusal(each.asked->place, rows.has_value());
            const bool isCertain = m_foretold.isCertain(each.asked->place);
            if (!each.isDone && code.isEmpty() && each.consequenceOf >= 0) {
                code = byValues[i] = byValues[static_cast<std::size_t>(each.consequenceOf)];
            } else if (!each.isDone && !isCertain) {
                byValues[i] = code;
            }
            isOtherwise = isOtherwise || !byValues[i].isEmpty();
            if (!isTold(each.version)) {
                continue;
            }
            if (each.isDone) {
                const bool isExpected = isOtherwise && !each.isExpectedRefused;
                m_proof.falseAlarms += isCertain && !code.isEmpty() && !isExpected ? 1 : 0;
                continue;
            }
            ++m_proof.refused;
            m_proof.foretold += code.isEmpty() ? 0 : 1;
            refused.push_back({each.asked->place, each.error.code, each.error.words, code, rows.has_value(),
                               rows == row_content::nulls});
        }
        return refused;
    }

    /// What was told of another history is not told again.
    void addDifferences(const proof_result & of, const QString & history)
    {
        for (std::size_t i = 0; i < of.differences.size(); ++i) {
            for (const check::schema_difference & each : of.differences[i]) {
                const QString key = QString::number(i) + u'\n' + keyOf(each);
                if (!m_toldOfHistories.contains(key)) {
                    m_toldOfHistories.insert(key);
                    add(each, i, history);
                }
            }
        }
    }

    void add(const check::schema_difference & from, std::size_t version, const QString & history)
    {
        if (isTold(version)) {
            m_proof.modelDifferences.push_back({m_versions[version].word,
                                                history + check::subjectOf(from),
                                                from.expected,
                                                from.found,
                                                {},
                                                {}});
        }
    }

    static QString keyOf(const check::schema_difference & of)
    {
        return check::subjectOf(of) + u'\n' + of.expected + u'\n' + of.found;
    }

    /// @param told what was told of the versions before: what follows from an earlier one is told once
    void compareWithNew(const database::catalogue & expected, const database::catalogue & found,
                        std::size_t version, QSet<QString> & told)
    {
        for (const check::schema_difference & each : check::compareSchemas(expected, found)) {
            const QString object = check::subjectOf(each);
            const QString key = keyOf(each);
            if (told.contains(key)) {
                continue;
            }
            told.insert(key);
            if (isTold(version)) {
                const bool isOrder = each.kind == check::difference_kind::order;
                m_proof.chainDifferences.push_back({m_versions[version].word, object, each.expected,
                                                    each.found, m_foretold.difference(object),
                                                    isOrder ? each.table : QString()});
            }
        }
    }

    const std::vector<version_scripts> & m_versions;
    const foretold_statements & m_foretold;
    int m_from;
    database_proof & m_proof;
    QSet<QString> m_toldOfHistories; ///< differences from what was foretold
};

} // namespace

void judge(const proof_results & of, const std::vector<version_scripts> & versions,
           const foretold_statements & foretold, int from, database_proof & proof)
{
    proof_judge judge(versions, foretold, from, proof);
    judge.judgeFull(of.full);
    if (!of.values) {
        return;
    }
    // What runs on tables with rows runs on empty ones as well, and does the same.
    if (of.empty) {
        judge.judgeHistory(*of.empty, of.full, std::nullopt);
        judge.judgeRows(*of.values, row_content::values);
    } else {
        judge.judgeHistory(*of.values, of.full, row_content::values);
    }
    judge.judgeValues(of.values->rows);
    if (of.nulls && of.nulls->hasRows) {
        judge.judgeRows(*of.nulls, row_content::nulls);
        judge.judgeValues(of.nulls->rows);
    }
}

} // namespace app

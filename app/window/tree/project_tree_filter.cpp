#include "app/window/tree/project_tree_filter.h"

#include "app/window/tree/project_tree_text.h"

#include "model/entity.h"
#include "model/enumeration.h"
#include "model/property.h"
#include "model/property_type.h"
#include "model/relationship.h"

#include <QByteArrayMatcher>
#include <QList>

#include <algorithm>

namespace app {

namespace {

/// No word holds a line break, so that none is found across two texts.
const QLatin1Char TextEnd('\n');

/// Equal for texts that people take for equal: in any case, and accents as one character or as two.
QString comparable(const QString & text)
{
    return text.normalized(QString::NormalizationForm_C).toCaseFolded();
}

/// The words to look for.
QList<QByteArray> wordsOf(const QString & text)
{
    QList<QByteArray> words;
    for (const QString & word : project_tree_filter::wordsOf(text)) {
        words << word.toUtf8();
    }
    return words;
}

/// The names of the values that a property of an enumeration can have.
QString valuesOf(const model::property & property)
{
    const auto type = property.getType();
    const auto enumeration = type && !property.hasRelationship() ? type->getEnumeration() : nullptr;
    QString names;
    for (const auto & value : enumeration ? enumeration->getValues() : QList<model::enumeration::value>()) {
        names += value.name + TextEnd;
    }
    return names;
}

template <class Object>
QString textsOf(const Object & object)
{
    QString texts;
    for (int column = 0; column < project_tree_text::column_count; ++column) {
        texts += project_tree_text::text(object, column) + TextEnd;
    }
    return texts;
}

} // namespace

bool project_tree_filter::isFilter(const QString & text)
{
    return !text.simplified().isEmpty();
}

void project_tree_filter::reset(const entities & list)
{
    m_lstEntity = list;
    m_iCollected = 0;
    m_texts.clear();
    m_lstRowEnd.clear();
    m_lstFirstRow.clear();
}

bool project_tree_filter::collectSome(int count)
{
    for (; count > 0 && m_iCollected < m_lstEntity.size(); --count) {
        collect(*m_lstEntity[m_iCollected++]);
    }
    const bool isComplete = m_iCollected == m_lstEntity.size();
    if (isComplete) {
        m_texts.squeeze();
    }
    return !isComplete;
}

void project_tree_filter::collect(const model::entity & entity)
{
    m_lstFirstRow.push_back(m_lstRowEnd.size());
    append(textsOf(entity));
    for (const std::shared_ptr<model::property> & p : entity.getListOfProperty(true, true, false)->values()) {
        append(p ? textsOf(*p) + valuesOf(*p) : QString());
        append(p && p->hasRelationship() ? textsOf(*p->getRelation()) : QString());
    }
}

void project_tree_filter::append(const QString & texts)
{
    m_texts += comparable(texts).toUtf8();
    m_lstRowEnd.push_back(m_texts.size());
}

QStringList project_tree_filter::wordsOf(const QString & text)
{
    return comparable(text).simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts).mid(0, MostWords);
}

std::vector<quint32> project_tree_filter::wordsInRows(const QString & text) const
{
    std::vector<quint32> result(m_lstRowEnd.size());
    quint32 bit = 1;
    for (const QByteArray & word : app::wordsOf(text)) {
        const QByteArrayMatcher matcher(word);
        auto end = m_lstRowEnd.begin();
        for (qsizetype at = matcher.indexIn(m_texts); at >= 0; at = matcher.indexIn(m_texts, *end)) {
            end = std::upper_bound(end, m_lstRowEnd.end(), at);
            result[static_cast<std::size_t>(end - m_lstRowEnd.begin())] |= bit;
        }
        bit <<= 1;
    }
    return result;
}

filter_result project_tree_filter::search(const QString & text)
{
    while (collectSome(static_cast<int>(m_lstEntity.size()))) {
    }
    const std::vector<quint32> words = wordsInRows(text);
    const quint32 all = static_cast<quint32>((quint64{1} << wordsOf(text).size()) - 1);
    filter_result result;
    for (std::size_t e = 0; e < m_lstFirstRow.size(); ++e) {
        const std::size_t own = m_lstFirstRow[e];
        const std::size_t end = e + 1 < m_lstFirstRow.size() ? m_lstFirstRow[e + 1] : words.size();
        shown_entity shown{static_cast<int>(e), static_cast<int>(result.properties.size()), 0};
        for (std::size_t row = own + 1; row < end; row += 2) {
            // The entity's words count for what lies below it, but something has to be found there.
            const quint32 below = words[row] | words[row + 1];
            if (below != 0 && (words[own] | below) == all && (words[own] != all || below == all)) {
                result.properties.push_back(static_cast<int>((row - own) / 2));
                result.opened.push_back((words[own] | words[row]) != all);
                ++shown.count;
            }
        }
        if (shown.count > 0) {
            result.entities.push_back(shown);
        } else if (words[own] == all) {
            result.entities.push_back({static_cast<int>(e), -1, static_cast<int>((end - own) / 2)});
        }
    }
    return result;
}

} // namespace app

#pragma once

#include "model/model_difference.h"

#include <QHash>
#include <QString>

#include <memory>
#include <optional>

namespace model {
class project;
class property;
} // namespace model

namespace app {

/// What changed in a model, in the words of the model.
class change_words
{
public:
    /// Both projects have to outlive it.
    change_words(const model::project & before, const model::project & after);

    /// The change on one line, to stand below its entity or enumeration, and below its property when it is
    /// one of a relationship or of a field: "column: e_mail -> mail", "+ property rank: int, not null".
    [[nodiscard]] QString lineOf(const model::model_change & change) const;
    /// The change as a reason, on one line: "because property 14 'length' was 'duration' until v3".
    /// @param from word for the former state
    [[nodiscard]] QString reasonOf(const model::model_change & change, const QString & from) const;

private:
    /// One of the two states, with what is looked up in it.
    class state
    {
    public:
        explicit state(const model::project & project) : m_project(project) {}

        [[nodiscard]] const model::project & project() const { return m_project; }
        [[nodiscard]] QString entityName(long id) const;
        [[nodiscard]] QString enumerationName(long id) const;
        [[nodiscard]] QString propertyName(long id) const;
        [[nodiscard]] std::shared_ptr<model::property> property(long id) const;

    private:
        const model::project & m_project;
        mutable std::optional<QHash<long, std::shared_ptr<model::property>>>
            m_properties; ///< made when asked for
    };

    /// The value of the field that differs, before or after.
    [[nodiscard]] QString formerValue(const model::model_change & change) const;
    [[nodiscard]] QString laterValue(const model::model_change & change) const;
    [[nodiscard]] static QString valueIn(const state & in, const QString & field, const QVariant & value);
    /// What an object that was added or removed is like, after its kind and name.
    [[nodiscard]] static QString described(const state & in, const model::named_object & object);
    [[nodiscard]] static QString describedProperty(const state & in, const model::property & property);
    [[nodiscard]] static QString describedRelation(const state & in, const model::property & property);

    state m_before;
    state m_after;
};

} // namespace app

#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace model {
class project;
}

namespace servers {

/// What differs between the databases in what a full script makes of a model.
struct expectations
{
    /// SQL type by C++ type; the type of anything else stands under "<default type>".
    std::function<QString(const QString & cppType)> sqlType;
    /// SQL type of the columns of a key that the database counts up; empty: as mapped.
    QString countedKeyType;
    /// SQL type of string columns of a key while relationships are exported; empty: as mapped.
    QString stringKeyType;
    /// Whether a counted key's type makes every column that has it NOT NULL.
    bool countedKeyTypeIsNotNull = false;
    /// Whether foreign keys stand inside CREATE TABLE: those to the own table too, none of link tables, no
    /// names.
    bool inlineForeignKeys = false;
    /// How the database spells a SQL type.
    std::function<QString(const QString & sqlType)> spell;
    bool relationships = false;
};

/// The lines that modelLinesOf() has to give after the full script of `project`.
[[nodiscard]] QStringList expectedCatalogue(const model::project & project, const expectations & e);

} // namespace servers

// What is told of settings that are stored otherwise than with a version.

#include "app/stored_settings.h"

#include <QTest>

using app::otherSettings;
using app::stored_settings;

class tst_stored_settings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void typesOfTheDatabaseAlone()
    {
        const stored_settings then =
            withTypes({{"<default type>", "TEXT"}, {"bool", "SMALLINT"}, {"int", "INTEGER"}});
        const stored_settings now =
            withTypes({{"<default type>", "TEXT"}, {"int", "BIGINT"}, {"QUuid", "UUID"}});
        QCOMPARE(otherSettings(then, now, "postgresql", {}),
                 QStringList({"the SQL type of 'QUuid' was nothing and is 'UUID'",
                              "the SQL type of 'bool' was 'SMALLINT' and is nothing",
                              "the SQL type of 'int' was 'INTEGER' and is 'BIGINT'"}));
        QCOMPARE(otherSettings(then, now, "sqlite", {}), QStringList());
        QCOMPARE(otherSettings(then, then, "postgresql", {}), QStringList());
    }
    void ofTwoRowsTheUpperOneCounts()
    {
        QCOMPARE(otherSettings(withTypes({{"int", "INTEGER"}, {"int", "BIGINT"}}),
                               withTypes({{"int", "INTEGER"}}), "postgresql", {}),
                 QStringList());
    }
    void manyAreCounted()
    {
        stored_settings then;
        const stored_settings now = withTypes({{"a", "A"}, {"b", "B"}, {"c", "C"}, {"d", "D"}, {"e", "E"}});
        QCOMPARE(otherSettings(then, now, "postgresql", {}),
                 QStringList({"the SQL type of 'a' was nothing and is 'A'",
                              "the SQL type of 'b' was nothing and is 'B'",
                              "the SQL type of 'c' was nothing and is 'C'", "the SQL types of 2 more"}));
    }
    void optionsThatAreAskedForHaveNone()
    {
        stored_settings then;
        stored_settings now;
        for (const char * const name : {"db", "path", "schema", "relationships", "custom-script"}) {
            plugin::friendly_option option;
            option.name = name;
            option.stored = "x";
            then.options.append(option);
            option.stored = "y";
            now.options.prepend(option);
        }
        QCOMPARE(otherSettings(then, now, "sqlite", {}),
                 QStringList({"relationships was 'x' and is 'y'", "custom-script was 'x' and is 'y'"}));
        QCOMPARE(otherSettings(then, now, "sqlite", {{"relationships", "y"}}),
                 QStringList("custom-script was 'x' and is 'y'"));
    }

private:
    static stored_settings withTypes(const QList<std::pair<QString, QString>> & types)
    {
        stored_settings settings;
        plugin::statement_database other;
        other.key = "sqlite";
        plugin::statement_database database;
        database.key = "postgresql";
        database.types = types;
        settings.databases = {other, database};
        return settings;
    }
};

QTEST_GUILESS_MAIN(tst_stored_settings)
#include "tst_stored_settings.moc"

/// <reference path="custom_script.d.ts" />
//
// A custom script for the DDL export. To use it, copy it, change it, and name the copy in the export's settings or
// on the command line:
//
//     korvane export shop.korv --custom-script custom_script.js
//
// A relative name is taken from the folder of the project file.
//
// Before the export writes a statement it calls exportStep() with the object that the statement is about and the
// statement itself, parameters.default_value. What exportStep() returns is written instead:
//     a text             is written as it is; an empty text leaves an empty line
//     nothing, or null   keeps the statement
//     anything else      ends the export, and so does an exception:
//                        throw new Error("no table without a key") is a way to refuse a model
//
// Out of the box this script only adds comments in SQL, so its output can be run like the original. The lines that
// change more are switched off by the constants below.

const ADD_COMMENTS = true;   // a comment line before each table
const SKIP_LOG_TABLES = false; // no table for entities whose name begins with "log_"
const GUARD_DROPS = false;   // DROP statements are written as comments, for a person to decide
const MYSQL_ENGINE = "";     // for example "InnoDB"

function comment(text) {
    // A line end within a name must not end the comment.
    return "-- " + String(text).replace(/\s+/g, " ");
}

function asComment(statement) {
    return statement.split("\n").map(line => "-- " + line).join("\n");
}

function tableOf(entity) {
    return entity.getTableName() || entity.getName();
}

// One function for each action. Each gets the objects that belong to the action; the others are null there.
const steps = {

    // Top of every file. No entity, no property.
    DDL_EXPORT_BEGIN(project, entity, property, parameters) {
        const header = comment("Project " + project.getName() + ", " +
                               project.getListOfAllEntities().length + " entities");
        return ADD_COMMENTS ? header + "\n" + parameters.default_value : undefined;
    },

    // A new table; `entity` is its entity.
    CREATE_TABLE(project, entity, property, parameters) {
        if (SKIP_LOG_TABLES && entity.getName().startsWith("log_")) {
            return "";
        }
        let statement = parameters.default_value;
        if (MYSQL_ENGINE && parameters.current_file.includes("_mysql_")) {
            statement = statement.replace(/;\s*$/, " ENGINE=" + MYSQL_ENGINE + ";");
        }
        const columns = entity.getListOfProperty().filter(p => !p.isTransient()).length;
        return ADD_COMMENTS && statement
            ? comment(tableOf(entity) + ": " + columns + " properties, version " + entity.getVersion()) + "\n" +
              statement
            : statement;
    },

    // The link table of a many-to-many relationship; `property` holds the relationship.
    CREATE_EXTRA_TABLE(project, entity, property, parameters) {
        const relation = property.getRelation();
        const target = relation ? relation.getEntityTarget() : null;
        return ADD_COMMENTS && entity && target && parameters.default_value
            ? comment(relation.getExtraTable() + " links " + tableOf(entity) + " and " + tableOf(target)) + "\n" +
              parameters.default_value
            : undefined;
    },

    // An index on the columns of `property`.
    CREATE_INDEX(project, entity, property, parameters) {
        // Meta-data of the model can steer a script: {"metaData": {"NO_INDEX": true}} on the entity.
        return entity.getMetaData("NO_INDEX") ? "" : undefined;
    },

    // A foreign key; `property` holds the relationship.
    ADD_FOREIGN_KEY(project, entity, property, parameters) {
        const relation = property.getRelation();
        if (relation && relation.getEntityTarget() === entity) {
            console.info(entity.getName() + " refers to itself by " + property.getName());
        }
        return undefined;
    },

    // The remaining actions occur in evolution scripts, which lead from one version of the project to the next.

    // `entity` is that of the previous version, which had the table.
    DROP_TABLE(project, entity, property, parameters) {
        if (!GUARD_DROPS) {
            return undefined;
        }
        console.warn("The table " + tableOf(entity) + " is not dropped by the script");
        return asComment(parameters.default_value);
    },

    // `entity` is that of the current version: it has the new name.
    RENAME_TABLE(project, entity, property, parameters) {
        return undefined;
    },

    // `property` is the one that was dropped.
    DROP_COLUMN(project, entity, property, parameters) {
        return GUARD_DROPS ? asComment(parameters.default_value) : undefined;
    },

    // `property` is the new one.
    ADD_COLUMN(project, entity, property, parameters) {
        // A column that must not be null cannot be added to a table that has rows.
        if (!property.getAllowNull() && !property.hasRelationship()) {
            console.warn("Does " + tableOf(entity) + " have rows? " + property.getName() + " must not be null");
        }
        return undefined;
    },

    RENAME_COLUMN(project, entity, property, parameters) {
        return undefined;
    },

    DROP_INDEX(project, entity, property, parameters) {
        return undefined;
    },

    DROP_FOREIGN_KEY(project, entity, property, parameters) {
        return undefined;
    },

    // Bottom of every file. No entity, no property.
    DDL_EXPORT_END(project, entity, property, parameters) {
        return ADD_COMMENTS ? parameters.default_value + "\n" + comment("End, written by " + parameters.plugin_name)
                            : undefined;
    },
};

function exportStep(project, entity, property, enumeration, parameters) {
    const step = steps[parameters.action];
    // An action of a later version of the exporter keeps its statement.
    return step ? step(project, entity, property, parameters) : undefined;
}

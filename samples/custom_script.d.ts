// Types of the custom script of an export. An editor that understands TypeScript completes and checks a script
// that stands next to this file and begins with
//     /// <reference path="custom_script.d.ts" />
//
// Every operation only reads. An object stays valid as long as its project is loaded; after that it answers with
// null, false, 0, empty texts and empty lists.

/** Called for every statement that an export is about to write.
 *
 * A returned text is written instead, also an empty one. undefined and null keep parameters.default_value. Any
 * other result, an exception, and a call that runs longer than the time limit end the export. */
declare function exportStep(
    project: Project | null,
    entity: Entity | null,
    property: Property | null,
    enumeration: Enumeration | null,
    parameters: StepParameters
): string | null | undefined;

type Action =
    | "DDL_EXPORT_BEGIN" | "CREATE_TABLE" | "CREATE_EXTRA_TABLE" | "CREATE_INDEX" | "ADD_FOREIGN_KEY"
    | "DROP_TABLE" | "RENAME_TABLE" | "DROP_COLUMN" | "ADD_COLUMN" | "RENAME_COLUMN" | "DROP_INDEX"
    | "DROP_FOREIGN_KEY" | "DDL_EXPORT_END";

interface StepParameters {
    /** Name of the plug-in that exports. */
    plugin_name: string;
    /** Absolute name of the file being written. */
    current_file: string;
    /** Folder that receives the files. */
    output_location: string;
    /** The statement that is written when the script does not replace it. */
    default_value: string;
    /** What the statement does. */
    action: Action;
}

/** What a script writes here becomes a message of the export. */
declare const console: {
    log(...values: unknown[]): void;
    info(...values: unknown[]): void;
    debug(...values: unknown[]): void;
    warn(...values: unknown[]): void;
    /** Like the others, but shown as an error. It does not end the export: throw an Error for that. */
    error(...values: unknown[]): void;
};

interface Project {
    /** Identity of the object, the same in all versions of a project. */
    getId(): number;
    /** The value stored under the key; undefined when there is none. */
    getMetaData(key: string): string | number | boolean | undefined;
    getAllMetaData(): { [key: string]: string | number | boolean };
    getName(): string;
    /** Folder of the project file. */
    getLocation(): string;
    getFileName(): string;
    getThis(): Project | null;
    /** All entities in model order. Every call makes a new array. */
    getListOfAllEntities(): Entity[];
    getEntityById(id: number): Entity | null;
    getListOfEnumeration(): Enumeration[];
    getEnumerationById(id: number): Enumeration | null;
    toString(): string;
}

/** A class of the model: one table. */
interface Entity {
    getId(): number;
    getMetaData(key: string): string | number | boolean | undefined;
    getAllMetaData(): { [key: string]: string | number | boolean };
    getKey(): string;
    /** The key given in the model, empty when it is the name. */
    getExplicitKey(): string;
    getName(): string;
    /** Empty when the table has the entity's name. */
    getTableName(): string;
    /** Revision counter. */
    getVersion(): number;
    /** Name of the column that marks deleted rows, empty for none. */
    getSoftDeleteColumn(): string;
    /** The primary key. */
    getPropertyId(b?: boolean): Property | null;
    getPropertyById(id: number): Property | null;
    /** The properties in model order, by default all of them. Every call makes a new array. */
    getListOfProperty(withIdentifier?: boolean, withTransient?: boolean, b?: boolean): Property[];
    getListOfRelation(): Relationship[];
    getProject(): Project | null;
    toString(): string;
}

/** A member of an entity: no, one or several columns. */
interface Property {
    getId(): number;
    getMetaData(key: string): string | number | boolean | undefined;
    getAllMetaData(): { [key: string]: string | number | boolean };
    getKey(): string;
    getExplicitKey(): string;
    getName(): string;
    /** Name of column `index` (from 0); without an index all names separated by "|", empty when the column has
     * the property's name. */
    getColumnName(index?: number): string;
    getColumnNameCount(): number;
    getEntityId(): number;
    getEntity(): Entity | null;
    getType(): PropertyType | null;
    /** The SQL type that the model forces, empty for none. */
    getForceSqlType(): string;
    getExplicitForceSqlType(): string;
    isIdentifier(): boolean;
    getAllowNull(): boolean;
    getUnique(): boolean;
    isIndex(): boolean;
    isTransient(): boolean;
    /** null when the model leaves it to the type. */
    getAutoIncrement(): boolean | null;
    hasRelationship(): boolean;
    getRelation(): Relationship | null;
    /** Whether column `index` holds whole numbers; without an index, whether the database counts the key up. */
    isNumber(b?: boolean, index?: number): boolean;
    /** Whether column `index` holds text; without an index, whether all columns do. */
    isString(b?: boolean, index?: number): boolean;
    toString(): string;
}

interface PropertyType {
    /** C++ type of column `index` (from 0); without an index that of the whole property. */
    getPrimitiveType(index?: number): string;
    getEnumeration(): Enumeration | null;
    getCppTypes(): string[];
    toString(): string;
}

interface Relationship {
    getId(): number;
    getMetaData(key: string): string | number | boolean | undefined;
    getAllMetaData(): { [key: string]: string | number | boolean };
    /** 0 one-to-one, 1 one-to-many, 2 many-to-one, 3 many-to-many. */
    getType(): 0 | 1 | 2 | 3;
    /** The property that holds the relationship. */
    getProperty(): Property | null;
    /** The property on the other side. */
    getInverse(): Property | null;
    getInverseId(): number;
    getEntityTarget(): Entity | null;
    getEntityTargetId(): number;
    /** Name of the link table of a many-to-many relationship. */
    getExtraTable(): string;
    /** Columns of the link table that refer to the holding entity, separated by "|". */
    getForeignKey(): string;
    /** Columns of the link table that refer to the target, separated by "|". */
    getForeignKeyOwner(): string;
    getColumnNameCount(): number;
    getColumnName(index: number): string;
    /** Whether the foreign-key columns lie in the table of the holding entity. */
    hasColumns(): boolean;
    /** The property whose type the foreign-key columns take. */
    getKeyProperty(): Property | null;
    toString(): string;
}

interface Enumeration {
    getId(): number;
    getMetaData(key: string): string | number | boolean | undefined;
    getAllMetaData(): { [key: string]: string | number | boolean };
    getName(): string;
    getValues(): { name: string; number: number }[];
    toString(): string;
}

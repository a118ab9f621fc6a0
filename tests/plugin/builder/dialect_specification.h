#pragma once

#include "opened_builder.h"
#include "support/model_builder.h"

#include <QObject>
#include <QtTest>

/// What every dialect is asked. Each expected text is a pure virtual function: a new dialect does not compile
/// before it has answered all of them.
///
/// The model: person (key id) has many tags and one country; currency has a string key, pair a composite one;
/// holder refers to both.
class dialect_specification : public QObject
{
    Q_OBJECT

public:
    explicit dialect_specification(plugin::ddl_export::database_type db) : m_db(db) {}

protected:
    virtual QString builderName() const = 0;
    virtual QString begin() const = 0;
    virtual QString end() const = 0;
    virtual QString numericType() const = 0;
    virtual QString otherType() const = 0;
    virtual bool altersTableForForeignKeys() const = 0;

    virtual QString personTable() const = 0;
    virtual QString personTableWithRelationships() const = 0;
    virtual QString currencyTable() const = 0;
    virtual QString currencyTableWithRelationships() const = 0;
    virtual QString pairTable() const = 0;
    virtual QString pairTableWithRelationships() const = 0;
    virtual QString countedPairTable() const = 0;
    virtual QString holderTable() const = 0;
    virtual QString holderTableWithRelationships() const = 0;
    virtual QString tableWithoutKey() const = 0;
    virtual QString tableWithoutColumns() const = 0;
    virtual QString tableWithRepeatedColumns() const = 0;

    virtual QString droppedTable() const = 0;
    virtual QString renamedTable() const = 0;
    virtual QString addedColumn() const = 0;
    virtual QString addedColumnWithConstraints() const = 0;
    virtual QString addedColumns() const = 0;
    virtual QString addedForeignKeyColumns() const = 0;
    virtual QString droppedColumn() const = 0;
    virtual QString droppedColumns() const = 0;
    virtual QString renamedColumn() const = 0;
    virtual QString renamedColumnThatForbidsNull() const = 0;
    virtual QString renamedSecondColumn() const = 0;
    virtual QString renamedFirstAndThirdColumn() const = 0;
    virtual QString columnsOfAnotherNumber() const = 0;
    virtual QString columnWithTheSameName() const = 0;

    virtual QString manyToOneForeignKey() const = 0;
    virtual QString compositeForeignKey() const = 0;
    virtual QString oneToOneForeignKey() const = 0;
    virtual QString manyToManyForeignKey() const = 0;
    virtual QString compositeManyToManyForeignKey() const = 0;
    virtual QString droppedForeignKey() const = 0;
    virtual QString droppedManyToManyForeignKey() const = 0;

    virtual QString stringIndex() const = 0;
    virtual QString numberIndex() const = 0;
    virtual QString threeIndexes() const = 0;
    virtual QString droppedIndex() const = 0;
    virtual QString threeDroppedIndexes() const = 0;
    virtual QString droppedIndexOfARenamedTable() const = 0;
    virtual QString droppedIndexOfAnUnknownEntity() const = 0;

    virtual QString linkTable() const = 0;
    virtual QString linkTableOfStringAndCompositeKeys() const = 0;
    virtual QString linkTableOfStringAndCompositeKeysWithRelationships() const = 0;

    /// A builder for the model, with the default types.
    std::unique_ptr<opened_builder> newBuilder(bool relationships = false)
    {
        m_plugin.setExportRelationships(relationships);
        auto builder = std::make_unique<opened_builder>(m_db, &m_plugin);
        builder->setProjects(&m_model.project());
        return builder;
    }
    /// An entity "t_user" with a key column "id" of type BIGINT, as the manuals of the databases show it.
    static support::model_builder userModel();

    support::model_builder m_model;
    /// The same objects as they were in an earlier version.
    support::model_builder m_earlier;

private Q_SLOTS:
    void init();

    void hasANameAndAFrame();
    void hasTypesWithoutAnyMapping();
    void createsTables_data();
    void createsTables();
    void registersIndexesAndLinkTables();
    void createsTablesWithoutKeyOrColumns();
    void dropsAndRenamesTables();
    void addsColumns();
    void dropsColumns();
    void renamesColumns();
    void addsForeignKeys();
    void dropsForeignKeys();
    void createsIndexes();
    void dropsIndexes();
    void createsLinkTables();
    void answersMissingObjectsWithNothing();
    void answersObjectsOfAnotherProjectWithNothing();
    void countsRelationshipsAsOffWithoutPlugin();

private:
    plugin::ddl_export::database_type m_db;
    plugin::ddl_export m_plugin;
};

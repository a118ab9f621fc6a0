// Which entities and relationships of a project a diagram shows.

#include "app/diagram/diagram_graph.h"

#include "support/model_builder.h"

#include <QTest>

using app::diagram_end;
using app::diagram_graph;
using app::diagram_mark;
using app::diagram_piece;
using app::diagram_relation;
using model::relationship;
using support::model_builder;

namespace {

QString endText(diagram_end end)
{
    return end == diagram_end::many ? "n" : end == diagram_end::exactly_one ? "1" : "0..1";
}

/// All relationships as "one 0..1-n other: name", one a line.
QStringList relationsOf(const diagram_graph & graph)
{
    QStringList result;
    for (const diagram_relation & relation : graph.relations()) {
        QString text = QStringLiteral("%1 %2-%3 %4: %5.%6")
                           .arg(graph.entities()[relation.from].name, endText(relation.fromEnd),
                                endText(relation.toEnd), graph.entities()[relation.to].name,
                                graph.entities()[relation.holder].name, relation.name);
        if (!relation.inverseName.isEmpty()) {
            text += QStringLiteral(" inverse ") + relation.inverseName;
        }
        if (!relation.linkTable.isEmpty()) {
            text += QStringLiteral(" link ") + relation.linkTable;
        }
        result << text;
    }
    return result;
}

QStringList namesOf(const diagram_graph & graph, const diagram_piece & piece)
{
    QStringList names;
    for (const int entity : piece.entities) {
        names << graph.entities()[entity].name;
    }
    return names;
}

/// Entities "e1" to "e<count>" with ids 1 to count, without relationships.
model_builder entities(int count)
{
    model_builder model;
    for (int i = 1; i <= count; ++i) {
        model.entity(i, QStringLiteral("e%1").arg(i)).identifier(i * 100, "id", "long");
    }
    return model;
}

support::entity_builder at(const model_builder & model, long id)
{
    return support::entity_builder(model.entity(id));
}

/// Lets entity `from` refer to entity `to`.
void refer(const model_builder & model, long from, long to, long id)
{
    at(model, from).relation(id, QStringLiteral("r%1").arg(id), id, relationship::many_to_one, to);
}

} // namespace

class tst_diagram_graph : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void copiesWhatItNeeds()
    {
        diagram_graph graph;
        {
            model_builder model;
            auto e = model.entity(7, "customer").table("t_customer").version(3);
            e.identifier(1, "id", "long");
            e.property(2, "name", "QString");
            e.property(3, "cache", "QString").transient();
            e.relation(4, "country", 40, relationship::many_to_one, 8);
            e.relation(5, "passport", 50, relationship::one_to_one, 8);
            e.relation(6, "orders", 60, relationship::one_to_many, 8);
            e.relation(7, "tags", 70, relationship::many_to_many, 8);
            model.entity(8, "other");
            graph = diagram_graph(model.project());
        } // the project is gone
        QCOMPARE(graph.count(), 2);
        const app::diagram_entity & entity = graph.entities()[0];
        QCOMPARE(entity.id, 7L);
        QCOMPARE(entity.name, "customer");
        QCOMPARE(entity.tableName, "t_customer");
        QCOMPARE(entity.version, 3L);
        QCOMPARE(graph.entities()[1].tableName, "");
        QCOMPARE(graph.indexOf(7), 0);
        QCOMPARE(graph.indexOf(8), 1);
        QCOMPARE(graph.indexOf(9), -1);
        const QList<app::diagram_property> & properties = entity.properties;
        QCOMPARE(properties.size(), 7);
        const QList<diagram_mark> marks{diagram_mark::key,         diagram_mark::none,
                                        diagram_mark::none,        diagram_mark::reference,
                                        diagram_mark::reference,   diagram_mark::one_to_many,
                                        diagram_mark::many_to_many};
        for (int i = 0; i < 7; ++i) {
            QCOMPARE(properties[i].mark, marks[i]);
            QCOMPARE(properties[i].isTransient, i == 2);
            QCOMPARE(properties[i].isTargetMissing, false);
        }
        QCOMPARE(properties[3].name, "country");
    }

    void knowsTheEndsOfRelationships()
    {
        model_builder model = entities(2);
        auto e = at(model, 1);
        e.relation(110, "a", 110, relationship::many_to_one, 2);
        e.relation(111, "b", 111, relationship::many_to_one, 2).notNull();
        e.relation(112, "c", 112, relationship::one_to_one, 2);
        e.relation(113, "d", 113, relationship::one_to_one, 2).notNull();
        e.relation(114, "e", 114, relationship::one_to_many, 2).notNull();
        e.relation(115, "f", 115, relationship::many_to_many, 2).linkTable("t_f", "x", "y", 0);
        QCOMPARE(relationsOf(diagram_graph(model.project())),
                 QStringList({"e2 0..1-n e1: e1.a", "e2 1-n e1: e1.b", "e2 0..1-0..1 e1: e1.c",
                              "e2 1-0..1 e1: e1.d", "e1 0..1-n e2: e1.e", "e1 n-n e2: e1.f link t_f"}));
    }

    void aKeyIsNeverEmpty()
    {
        model_builder model;
        model.entity(1, "person").identifier(1, "id", "long");
        auto badge = model.entity(2, "badge");
        badge.relation(2, "person", 2, relationship::one_to_one, 1).get()->setIdentifier(true);
        const diagram_graph graph(model.project());
        QCOMPARE(relationsOf(graph), QStringList("person 1-0..1 badge: badge.person"));
        QCOMPARE(graph.entities()[1].properties[0].mark, diagram_mark::key_reference);
        QCOMPARE(graph.entities()[1].properties[0].traits.isNotNull, false); // goes without saying
    }

    void bothDirectionsAreOne_data()
    {
        QTest::addColumn<int>("there");
        QTest::addColumn<int>("back");
        QTest::addColumn<long>("thereInverse");
        QTest::addColumn<long>("backInverse");
        QTest::addColumn<QStringList>("expected");
        using r = relationship;
        QTest::newRow("many first") << int(r::many_to_one) << int(r::one_to_many) << 201L << 101L
                                    << QStringList("e2 0..1-n e1: e1.there inverse back");
        QTest::newRow("one first") << int(r::one_to_many) << int(r::many_to_one) << 201L << 101L
                                   << QStringList("e1 0..1-n e2: e2.back inverse there");
        QTest::newRow("only the first says it") << int(r::one_to_many) << int(r::many_to_one) << 201L << 0L
                                                << QStringList("e1 0..1-n e2: e2.back inverse there");
        QTest::newRow("only the second says it") << int(r::many_to_one) << int(r::one_to_many) << 0L << 101L
                                                 << QStringList("e2 0..1-n e1: e1.there inverse back");
        QTest::newRow("one to one") << int(r::one_to_one) << int(r::one_to_one) << 201L << 101L
                                    << QStringList("e2 0..1-0..1 e1: e1.there inverse back");
        QTest::newRow("many to many") << int(r::many_to_many) << int(r::many_to_many) << 201L << 101L
                                      << QStringList("e1 n-n e2: e1.there inverse back");
        QTest::newRow("nobody says it") << int(r::many_to_one) << int(r::one_to_many) << 0L << 0L
                                        << QStringList({"e2 0..1-n e1: e1.there", "e2 0..1-n e1: e2.back"});
        QTest::newRow("types that do not fit")
            << int(r::many_to_one) << int(r::many_to_one) << 201L << 101L
            << QStringList({"e2 0..1-n e1: e1.there", "e1 0..1-n e2: e2.back"});
        QTest::newRow("two lists do not fit")
            << int(r::one_to_many) << int(r::one_to_many) << 201L << 101L
            << QStringList({"e1 0..1-n e2: e1.there", "e2 0..1-n e1: e2.back"});
        QTest::newRow("no such property") << int(r::many_to_one) << int(r::one_to_many) << 999L << 0L
                                          << QStringList({"e2 0..1-n e1: e1.there", "e2 0..1-n e1: e2.back"});
    }
    void bothDirectionsAreOne()
    {
        QFETCH(int, there);
        QFETCH(int, back);
        QFETCH(long, thereInverse);
        QFETCH(long, backInverse);
        model_builder model = entities(2);
        at(model, 1)
            .relation(101, "there", 11, static_cast<relationship::type_relation>(there), 2)
            .relation()
            ->setInverseId(thereInverse);
        at(model, 2)
            .relation(201, "back", 21, static_cast<relationship::type_relation>(back), 1)
            .relation()
            ->setInverseId(backInverse);
        QTEST(relationsOf(diagram_graph(model.project())), "expected");
    }

    void theInverseMustLeadBack()
    {
        model_builder model = entities(3);
        at(model, 1).relation(101, "there", 11, relationship::many_to_one, 2).relation()->setInverseId(201);
        at(model, 2).relation(201, "elsewhere", 21, relationship::one_to_many, 3);
        QCOMPARE(relationsOf(diagram_graph(model.project())),
                 QStringList({"e2 0..1-n e1: e1.there", "e2 0..1-n e3: e2.elsewhere"}));
    }

    void theOwnerOfAPairSaysWhetherItIsMandatory()
    {
        model_builder model = entities(2);
        at(model, 1).relation(101, "list", 11, relationship::one_to_many, 2).relation()->setInverseId(201);
        at(model, 2).relation(201, "parent", 21, relationship::many_to_one, 1).notNull();
        QCOMPARE(relationsOf(diagram_graph(model.project())),
                 QStringList("e1 1-n e2: e2.parent inverse list"));
    }

    void whoIsNamedBackHasTheInverse()
    {
        model_builder model = entities(2);
        // Both lists name "parent", which names the second.
        at(model, 1).relation(101, "some", 11, relationship::one_to_many, 2).relation()->setInverseId(201);
        at(model, 1).relation(102, "all", 12, relationship::one_to_many, 2).relation()->setInverseId(201);
        at(model, 2).relation(201, "parent", 21, relationship::many_to_one, 1).relation()->setInverseId(102);
        QCOMPARE(relationsOf(diagram_graph(model.project())),
                 QStringList({"e1 0..1-n e2: e1.some", "e1 0..1-n e2: e2.parent inverse all"}));
    }

    void takesTheLinkTableFromEitherSide()
    {
        model_builder model = entities(2);
        at(model, 1).relation(101, "there", 11, relationship::many_to_many, 2).relation()->setInverseId(201);
        at(model, 2)
            .relation(201, "back", 21, relationship::many_to_many, 1)
            .linkTable("t_link", "a", "b", 101);
        QCOMPARE(relationsOf(diagram_graph(model.project())),
                 QStringList("e1 n-n e2: e1.there inverse back link t_link"));
    }

    void showsRelationshipsOfAnEntityWithItself()
    {
        model_builder model = entities(1);
        at(model, 1).relation(101, "parent", 11, relationship::many_to_one, 1);
        at(model, 1)
            .relation(102, "children", 12, relationship::one_to_many, 1)
            .relation()
            ->setInverseId(101);
        at(model, 1).relation(103, "likes", 13, relationship::many_to_many, 1).relation()->setInverseId(103);
        const diagram_graph graph(model.project());
        QCOMPARE(relationsOf(graph),
                 QStringList({"e1 0..1-n e1: e1.parent inverse children", "e1 n-n e1: e1.likes"}));
        QCOMPARE(graph.relationsOf(0).size(), 2U);
        const diagram_piece piece = graph.everything();
        QCOMPARE(piece.relations, QList<int>({0, 1}));
        QCOMPARE(piece.hidden, QList<int>({0}));
    }

    void parallelRelationshipsStaySeparate()
    {
        model_builder model = entities(2);
        refer(model, 1, 2, 101);
        refer(model, 1, 2, 102);
        refer(model, 2, 1, 201);
        const diagram_graph graph(model.project());
        QCOMPARE(graph.everything().relations, QList<int>({0, 1, 2}));
        QCOMPARE(graph.relationsOf(0).size(), 3U);
        QCOMPARE(graph.relationsOf(1).size(), 3U);
    }

    void aMissingTargetConnectsNothing()
    {
        model_builder model = entities(2);
        refer(model, 1, 77, 101);
        refer(model, 1, 2, 102);
        const diagram_graph graph(model.project());
        QCOMPARE(relationsOf(graph), QStringList("e2 0..1-n e1: e1.r102"));
        QCOMPARE(graph.entities()[0].properties[1].isTargetMissing, true);
        QCOMPARE(graph.entities()[0].properties[1].mark, diagram_mark::reference);
        QCOMPARE(graph.entities()[0].properties[2].isTargetMissing, false);
    }

    void aTransientRelationshipConnectsNothing()
    {
        model_builder model = entities(2);
        at(model, 1).relation(101, "cached", 11, relationship::many_to_one, 2).transient();
        const diagram_graph graph(model.project());
        QCOMPARE(graph.relations().size(), 0);
        QCOMPARE(graph.entities()[0].properties[1].isTransient, true);
        QCOMPARE(graph.entities()[0].properties[1].isTargetMissing, false);
    }

    void takesProjectsWithoutContents()
    {
        model::project project(1);
        QCOMPARE(diagram_graph(project).count(), 0);
        QCOMPARE(diagram_graph(project).everything().entities.size(), 0);
        project.setListOfAllEntities(nullptr);
        QCOMPARE(diagram_graph(project).count(), 0);
        const auto list = std::make_shared<model::project::list_of_entity>();
        list->insert(1, nullptr);
        list->insert(2, std::make_shared<model::entity>(2, "real"));
        project.setListOfAllEntities(list);
        const diagram_graph graph(project);
        QCOMPARE(graph.count(), 1);
        QCOMPARE(graph.indexOf(2), 0);
        QCOMPARE(diagram_graph().everything().entities.size(), 0);
    }

    void findsNeighboursInBothDirections()
    {
        // 4 -> 2 -> 1 <- 3 <- 5 <- 6, and 7 alone
        model_builder model = entities(7);
        refer(model, 2, 1, 201);
        refer(model, 4, 2, 401);
        refer(model, 3, 1, 301);
        refer(model, 5, 3, 501);
        refer(model, 6, 5, 601);
        const diagram_graph graph(model.project());
        const diagram_piece near = graph.neighbourhood(0, 1, 60);
        QCOMPARE(namesOf(graph, near), QStringList({"e1", "e2", "e3"}));
        QCOMPARE(near.hidden, QList<int>({0, 1, 1}));
        QCOMPARE(near.relations, QList<int>({0, 1}));
        QCOMPARE(near.leftOut, 0);
        const diagram_piece further = graph.neighbourhood(0, 2, 60);
        QCOMPARE(namesOf(graph, further), QStringList({"e1", "e2", "e3", "e4", "e5"}));
        QCOMPARE(further.hidden, QList<int>({0, 0, 0, 0, 1}));
        QCOMPARE(namesOf(graph, graph.neighbourhood(0, 3, 60)),
                 QStringList({"e1", "e2", "e3", "e4", "e5", "e6"}));
        QCOMPARE(namesOf(graph, graph.neighbourhood(4, 1, 60)), QStringList({"e5", "e3", "e6"}));
        QCOMPARE(namesOf(graph, graph.neighbourhood(6, 3, 60)), QStringList({"e7"}));
    }

    void neighboursKeepTheOrderOfTheModel()
    {
        model_builder model = entities(5);
        refer(model, 1, 5, 101); // found before 2
        refer(model, 1, 2, 102);
        refer(model, 5, 3, 501); // found before 4
        refer(model, 2, 4, 201);
        const diagram_graph graph(model.project());
        QCOMPARE(namesOf(graph, graph.neighbourhood(0, 2, 60)), QStringList({"e1", "e2", "e5", "e3", "e4"}));
        QCOMPARE(namesOf(graph, graph.neighbourhood(0, 2, 2)), QStringList({"e1", "e2"}));
    }

    void showsRelationshipsBetweenNeighbours()
    {
        model_builder model = entities(4);
        refer(model, 1, 2, 101);
        refer(model, 1, 3, 102);
        refer(model, 2, 3, 201); // between the two neighbours
        refer(model, 3, 4, 301); // leads out
        const diagram_graph graph(model.project());
        const diagram_piece piece = graph.neighbourhood(0, 1, 60);
        QCOMPARE(piece.relations, QList<int>({0, 1, 2}));
        QCOMPARE(piece.hidden, QList<int>({0, 0, 1}));
    }

    void aNeighbourhoodHasALargestNumber()
    {
        model_builder model = entities(100);
        for (int i = 2; i <= 100; ++i) {
            refer(model, i, 1, i * 100 + 1);
        }
        const diagram_graph graph(model.project());
        const diagram_piece piece = graph.neighbourhood(0, 1, 60);
        QCOMPARE(piece.entities.size(), 60);
        QCOMPARE(piece.entities.constFirst(), 0);
        QCOMPARE(piece.entities.constLast(), 59); // the first in model order
        QCOMPARE(piece.leftOut, 40);
        QCOMPARE(piece.hidden[0], 40);
        QCOMPARE(piece.relations.size(), 59);
        QCOMPARE(graph.neighbourhood(0, 1, 100).leftOut, 0);
        QCOMPARE(graph.neighbourhood(0, 1, 99).leftOut, 1);
    }

    void aNeighbourCountsOnceHoweverManyRelationshipsLeadToIt()
    {
        model_builder model = entities(3);
        refer(model, 1, 2, 101);
        refer(model, 2, 3, 201);
        refer(model, 2, 3, 202);
        refer(model, 3, 2, 301);
        const diagram_graph graph(model.project());
        QCOMPARE(graph.neighbourhood(0, 1, 60).hidden, QList<int>({0, 1}));
    }
};

QTEST_MAIN(tst_diagram_graph)
#include "tst_diagram_graph.moc"

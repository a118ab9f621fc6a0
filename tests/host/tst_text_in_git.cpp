// The text form under version control: the same model gives the same bytes, and a change is a few lines.

#include "support/project_support.h"
#include "support/random_chain.h"

#include "model/model_difference.h"

#include <QSet>
#include <QTemporaryDir>
#include <QTest>

namespace {

/// The lines that a comparison of both texts shows as gone or as new.
qsizetype changedLines(const QByteArray & before, const QByteArray & after)
{
    const QTemporaryDir folder;
    QStringList names;
    for (const QByteArray & text : {before, after}) {
        names << folder.filePath(QString::number(names.size()));
        QFile file(names.constLast());
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
            qFatal("cannot write %s", qPrintable(file.fileName()));
        }
    }
    QProcess diff;
    diff.start(QStringLiteral("diff"), names);
    if (!diff.waitForFinished() || diff.exitCode() > 1) {
        qFatal("diff: %s", diff.readAllStandardError().constData());
    }
    qsizetype lines = 0;
    for (const QByteArray & line : diff.readAllStandardOutput().split('\n')) {
        lines += line.startsWith('<') || line.startsWith('>') ? 1 : 0;
    }
    return lines;
}

/// Whether the entities stand in one order, and so do the enumerations.
bool haveOneOrder(const model::project & a, const model::project & b)
{
    const auto ids = [](const auto & list) {
        QList<long> result;
        for (long i = 0; i < list->count(); ++i) {
            result << list->getKeyByIndex(i);
        }
        return result;
    };
    return ids(a.getListOfAllEntities()) == ids(b.getListOfAllEntities()) &&
           ids(a.getListOfEnumeration()) == ids(b.getListOfEnumeration());
}

/// The property or the entity in whose line a change is, and the entity whose version it counts up.
QString lineOf(const model::model_change & change)
{
    const model::named_object & object =
        change.object.kind == model::object_kind::relationship ? change.owners.front() : change.object;
    return object.kind == model::object_kind::entity
               ? model::idName(object) + change.field.section(QLatin1Char('.'), 0, 0)
               : model::idName(object);
}

} // namespace

class tst_text_in_git : public QObject
{
    Q_OBJECT

private slots:
    void sameModelGivesTheSameBytes();
    void changeIsAFewLines();
};

void tst_text_in_git::sameModelGivesTheSameBytes()
{
    int models = 0;
    for (unsigned seed = 1; seed <= 40; ++seed) {
        const support::random_chain chain(seed);
        for (const auto & version : chain.versions()) {
            const QByteArray text = storage::text_form::write(*version);
            // Chains have types of keys, too, that an import refuses.
            if (support::errorOf(text).isEmpty()) {
                QCOMPARE(storage::text_form::write(*support::projectOf(text)), text);
                ++models;
            }
        }
    }
    QVERIFY2(models > 50, qPrintable(QString::number(models)));
}

void tst_text_in_git::changeIsAFewLines()
{
    int steps = 0;
    for (unsigned seed = 1; seed <= 60; ++seed) {
        const support::random_chain chain(seed);
        for (std::size_t i = 1; i < chain.versions().size(); ++i) {
            const model::project & before = *chain.versions()[i - 1];
            const model::project & after = *chain.versions()[i];
            const std::vector<model::model_change> changes = model::difference(before, after);
            // What comes, goes or moves takes the lines that it has; here it is about what stays in its
            // place.
            const bool isInPlace =
                std::all_of(changes.begin(), changes.end(), [](const model::model_change & each) {
                    return (each.change == model::change_kind::changed ||
                            each.change == model::change_kind::renamed) &&
                           each.field != QLatin1String("order");
                });
            if (changes.empty() || !isInPlace || !haveOneOrder(before, after)) {
                continue;
            }
            QSet<QString> lines;
            for (const model::model_change & each : changes) {
                lines.insert(lineOf(each));
            }
            for (const auto & entity : after.getListOfAllEntities()->values()) {
                const auto former = before.getEntityById(entity->getId());
                if (former && former->getVersion() != entity->getVersion()) {
                    lines.insert(QStringLiteral("version of %1").arg(entity->getId()));
                }
            }
            // One line is another one: it is gone, and it is new.
            const qsizetype shown =
                changedLines(storage::text_form::write(before), storage::text_form::write(after));
            QVERIFY2(shown <= 2 * lines.size(),
                     qPrintable(QStringLiteral("seed %1, step %2: %3 lines for %4 changes")
                                    .arg(seed)
                                    .arg(i)
                                    .arg(shown)
                                    .arg(lines.size())));
            ++steps;
        }
    }
    QVERIFY2(steps > 20, qPrintable(QString::number(steps)));
}

QTEST_GUILESS_MAIN(tst_text_in_git)
#include "tst_text_in_git.moc"

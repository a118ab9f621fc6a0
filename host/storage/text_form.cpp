#include "storage/text_form.h"

#include "model/model_difference.h"
#include "model/project.h"
#include "os/program_end.h"
#include "storage/id_marks.h"
#include "storage/text_draft.h"
#include "storage/text_tree.h"
#include "storage/text_writer.h"
#include "storage/texts.h"

#include <limits>
#include <new>

namespace storage::text_form {

namespace {

using text_tree::text_error;

/// Hangs the properties of the draft into their entities and resolves the enumerations.
void build(const text_draft::project & draft, model::project & project)
{
    project.setName(draft.name);
    for (const auto & enumeration : draft.enumerations) {
        project.addEnumeration(enumeration);
    }
    qsizetype entityIndex = 0;
    for (const text_draft::entity & entity : draft.entities) {
        qsizetype index = 0;
        for (const text_draft::property & property : entity.properties) {
            if (property.enumerationId != 0) {
                const auto enumeration = project.getEnumerationById(property.enumerationId);
                if (!enumeration) {
                    throw text_error{
                        {model_check::placeOfProperty(
                             model_check::placeOfEntity(entityIndex, entity.object->getName()), index,
                             property.object->getName()),
                         texts::tr("enumeration %1 does not exist").arg(property.enumerationId)}};
                }
                property.object->setType(std::make_shared<model::property_type>(enumeration));
            }
            entity.object->addProperty(property.object);
            ++index;
        }
        project.addEntity(entity.object);
        ++entityIndex;
    }
}

/// The version of an entity for which the text gives none; `place` is where it stands.
long followingVersion(const model::entity & entity, const QString & place, const model::project * existing)
{
    const auto stored = existing ? existing->getEntityById(entity.getId()) : nullptr;
    if (!stored) {
        return 1;
    }
    const bool changed = !model::isSame(entity, *stored);
    if (changed && stored->getVersion() == std::numeric_limits<long>::max()) {
        throw text_error{{place, texts::tr("the version cannot be raised any further")}};
    }
    return stored->getVersion() + (changed ? 1 : 0);
}

/// Remembers the ids that were given, and checks the model.
void succeed(model::project & project, const model::project * existing)
{
    if (existing) {
        remember(project, marksOf(*existing));
    }
    if (const auto finding = model_check::firstError(project)) {
        throw text_error{*finding};
    }
}

void readDraft(text_draft::project & draft, const model::project * existing, model::project & project)
{
    text_draft::assignIds(draft, existing);
    build(draft, project);
    succeed(project, existing);
    qsizetype index = 0;
    for (const text_draft::entity & entity : draft.entities) {
        const QString place = model_check::placeOfEntity(index++, entity.object->getName());
        entity.object->setVersion(entity.version ? *entity.version
                                                 : followingVersion(*entity.object, place, existing));
    }
}

/// Does `work`; what it throws is told of the text `sourceName`.
template <class Work>
zk::ZkBool told(const QString & sourceName, const Work & work)
{
    const auto failure = [&sourceName](const model_check::finding & finding) {
        return zk::ZkBool::failure(finding.text(sourceName));
    };
    try {
        work();
        return zk::ZkBool::success();
    } catch (const text_error & error) {
        return failure(error.finding);
    } catch (const std::bad_alloc &) {
        return failure({QString(), os::outOfMemoryText()});
    } catch (const std::exception & e) { // the parser's own
        return failure({QString(), model_check::printable(QString::fromLocal8Bit(e.what()))});
    }
}

} // namespace

zk::ZkBool read(const QByteArray & text, const QString & sourceName, const model::project * existing,
                model::project & project)
{
    return told(sourceName, [&] {
        text_draft::project draft = text_draft::read(text);
        readDraft(draft, existing, project);
    });
}

zk::ZkBool follow(model::project & project, const QString & sourceName, const model::project * existing)
{
    return told(sourceName, [&] {
        succeed(project, existing);
        qsizetype index = 0;
        for (const auto & entity : project.getListOfAllEntities()->values()) {
            const QString place = model_check::placeOfEntity(index++, entity->getName());
            entity->setVersion(followingVersion(*entity, place, existing));
        }
    });
}

QStringList versionWarnings(const model::project & project, const model::project & existing)
{
    QStringList warnings;
    const auto entities = project.getListOfAllEntities();
    for (long i = 0; i < entities->count(); ++i) {
        const auto entity = entities->getByIndex(i);
        const auto stored = existing.getEntityById(entity->getId());
        if (stored && stored->getVersion() == entity->getVersion() && !model::isSame(*entity, *stored)) {
            warnings << texts::tr("%1: changed, but its \"version\" is still %2, so no evolution script will "
                                  "contain the change; delete the \"version\" field or raise it")
                            .arg(model_check::placeOfEntity(i, entity->getName()),
                                 QString::number(entity->getVersion()));
        }
    }
    return warnings;
}

void settleVersions(const model::project & previous, model::project & current)
{
    for (const auto & entity : current.getListOfAllEntities()->values()) {
        const auto former = previous.getEntityById(entity->getId());
        if (!former) {
            continue;
        }
        const long version = former->getVersion();
        if (model::isSame(*entity, *former)) {
            entity->setVersion(version);
        } else if (entity->getVersion() == version) {
            entity->setVersion(version < std::numeric_limits<long>::max() ? version + 1 : version - 1);
        }
    }
}

QByteArray write(const model::project & project)
{
    return text_writer::projectText(project);
}

} // namespace storage::text_form

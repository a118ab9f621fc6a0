#pragma once

#include "model/entity.h"
#include "model/enumeration.h"
#include "model/persistable.h"
#include "zk/zk_collection.h"

#include <QSqlError>

#include <memory>

namespace model {

/// A project: the entities, properties, relationships and enumerations that a user models.
class KORVANE_EXPORT project : public persistable, public std::enable_shared_from_this<project>
{
public:
    using list_of_entity = zk::ZkCollection<long, std::shared_ptr<entity>>;
    using list_of_enumeration = zk::ZkCollection<long, std::shared_ptr<enumeration>>;

    explicit project(long id);
    ~project();
    project(const project &) = delete;
    project & operator=(const project &) = delete;

    [[nodiscard]] QString getName() const { return m_sName; }
    void setName(const QString & name) { m_sName = name; }
    /// Folder of the project file.
    [[nodiscard]] QString getLocation() const { return m_sLocation; }
    void setLocation(const QString & folder);
    /// The project file: the one last loaded or saved, else location + "/" + name + ".korv"; empty without a
    /// location.
    [[nodiscard]] QString getFileName() const;
    /// Ties the project to a file whose base name may differ from the project's name; sets the location as
    /// well.
    void setFileName(const QString & file);

    /// Shared handle of this project; null when no shared pointer owns it.
    [[nodiscard]] std::shared_ptr<project> getThis() { return weak_from_this().lock(); }

    /// All entities in model order; null only when it was set so.
    [[nodiscard]] std::shared_ptr<list_of_entity> getListOfAllEntities() const { return m_pEntities; }
    [[nodiscard]] std::shared_ptr<entity> getEntityById(long id) const;
    [[nodiscard]] std::shared_ptr<list_of_enumeration> getListOfEnumeration() const
    {
        return m_pEnumerations;
    }
    [[nodiscard]] std::shared_ptr<enumeration> getEnumerationById(long id) const;

    /// Appends an entity; false, and nothing changes, when an entity of that id is already there.
    bool addEntity(const std::shared_ptr<entity> & e);
    bool addEnumeration(const std::shared_ptr<enumeration> & e);
    /// Replaces the list of entities as a whole; null stands for a project without a valid list.
    void setListOfAllEntities(const std::shared_ptr<list_of_entity> & entities);

    /// Reads a project file into an empty project, as load() does it.
    using file_reader = QSqlError (*)(const QString & file, project & empty);
    /// Hands in what load() reads with: the model itself knows of no file format. Done once, at start.
    static void setFileReader(file_reader reader);

    /// Reads the project from getFileName() into this object, replacing its contents, its name included.
    /// Returns an invalid error on success; otherwise a one-line text with file, place and reason, and the
    /// object keeps the contents that it had.
    QSqlError load();
    /// Drops entities and enumerations. Name and location stay.
    void release();
    /// Takes over name and contents of `other`, which is left empty; location and file name stay.
    void takeContents(project & other);

private:
    void detachEntities();

    QString m_sName;
    QString m_sLocation;
    QString m_sFileName;
    std::shared_ptr<list_of_entity> m_pEntities;
    std::shared_ptr<list_of_enumeration> m_pEnumerations;
};

} // namespace model

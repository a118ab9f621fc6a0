#include "model/project.h"

#include "model/file_suffix.h"

#include <QDir>
#include <QFileInfo>

namespace model {

namespace {

project::file_reader fileReader = nullptr;

} // namespace

project::project(long id)
    : persistable(id), m_pEntities(std::make_shared<list_of_entity>()),
      m_pEnumerations(std::make_shared<list_of_enumeration>())
{
}

project::~project()
{
    detachEntities();
}

void project::setLocation(const QString & folder)
{
    m_sLocation = folder;
    m_sFileName.clear();
}

QString project::getFileName() const
{
    if (!m_sFileName.isEmpty() || m_sLocation.isEmpty()) {
        return m_sFileName;
    }
    return QDir(m_sLocation).absoluteFilePath(m_sName + QLatin1Char('.') + ProjectFileSuffix);
}

void project::setFileName(const QString & file)
{
    const QFileInfo info(file);
    m_sFileName = info.absoluteFilePath();
    m_sLocation = info.absolutePath();
}

std::shared_ptr<entity> project::getEntityById(long id) const
{
    if (!m_pEntities) {
        return nullptr;
    }
    const std::lock_guard lock(m_pEntities->mutex());
    return m_pEntities->getByKey(id);
}

std::shared_ptr<enumeration> project::getEnumerationById(long id) const
{
    const std::lock_guard lock(m_pEnumerations->mutex());
    return m_pEnumerations->getByKey(id);
}

bool project::addEntity(const std::shared_ptr<entity> & e)
{
    if (!m_pEntities) {
        m_pEntities = std::make_shared<list_of_entity>();
    }
    const std::lock_guard lock(m_pEntities->mutex());
    if (!e || !m_pEntities->insert(e->getId(), e)) {
        return false;
    }
    e->m_pProject = this;
    return true;
}

bool project::addEnumeration(const std::shared_ptr<enumeration> & e)
{
    const std::lock_guard lock(m_pEnumerations->mutex());
    return e && m_pEnumerations->insert(e->getId(), e);
}

void project::setListOfAllEntities(const std::shared_ptr<list_of_entity> & entities)
{
    detachEntities();
    m_pEntities = entities;
    if (m_pEntities) {
        for (const std::shared_ptr<entity> & e : m_pEntities->values()) {
            if (e) {
                e->m_pProject = this;
            }
        }
    }
}

void project::setFileReader(file_reader reader)
{
    fileReader = reader;
}

QSqlError project::load()
{
    project loaded(getId());
    loaded.setFileName(getFileName());
    if (const QSqlError error = fileReader(getFileName(), loaded); error.isValid()) {
        return error;
    }
    const QString file = getFileName();
    takeContents(loaded);
    setFileName(file);
    return {};
}

void project::release()
{
    detachEntities();
    m_pEntities = std::make_shared<list_of_entity>();
    m_pEnumerations = std::make_shared<list_of_enumeration>();
}

void project::takeContents(project & other)
{
    setListOfAllEntities(other.m_pEntities);
    m_pEnumerations = other.m_pEnumerations;
    m_sName = other.m_sName;
    for (auto it = other.getAllMetaData().cbegin(); it != other.getAllMetaData().cend(); ++it) {
        setMetaData(it.key(), it.value());
    }
    other.m_pEntities = std::make_shared<list_of_entity>();
    other.m_pEnumerations = std::make_shared<list_of_enumeration>();
}

void project::detachEntities()
{
    if (!m_pEntities) {
        return;
    }
    for (const std::shared_ptr<entity> & e : m_pEntities->values()) {
        if (e && e->m_pProject == this) {
            e->m_pProject = nullptr;
        }
    }
}

} // namespace model

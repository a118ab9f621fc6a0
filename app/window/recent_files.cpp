#include "app/window/recent_files.h"

#include <QSettings>

namespace app {

namespace {

const QString Key = QStringLiteral("recentFiles");

} // namespace

recent_files::recent_files()
{
    read();
}

void recent_files::read()
{
    m_files = QSettings().value(Key).toStringList().mid(0, Limit);
}

void recent_files::add(const QString & file)
{
    // Another window of the program may have opened files meanwhile.
    read();
    m_files.removeAll(file);
    m_files.prepend(file);
    m_files = m_files.mid(0, Limit);
    store();
}

void recent_files::remove(const QString & file)
{
    read();
    m_files.removeAll(file);
    store();
}

void recent_files::clear()
{
    m_files.clear();
    store();
}

void recent_files::store() const
{
    QSettings().setValue(Key, m_files);
}

} // namespace app

#include "tools/event_filter.h"
#include "tools/string_helper.h"
#include "tools/wait_cursor.h"

#include <QCursor>
#include <QEvent>
#include <QGuiApplication>
#include <QStringConverter>
#include <QTextStream>

namespace tools {

void string_helper::initTextStream(QTextStream * stream)
{
    stream->setEncoding(QStringConverter::Utf8);
    stream->setGenerateByteOrderMark(false);
}

wait_cursor::wait_cursor() : m_bShown(qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
{
    if (m_bShown) {
        QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
    }
}

wait_cursor::~wait_cursor()
{
    if (m_bShown) {
        QGuiApplication::restoreOverrideCursor();
    }
}

event_filter::event_filter(QObject * parent) : QObject(parent) {}
event_filter::~event_filter() = default;

bool event_filter::eventFilter(QObject * watched, QEvent * event)
{
    if (event->type() == QEvent::Show) {
        Q_EMIT onVisibilityChanged(watched, true);
    } else if (event->type() == QEvent::Hide) {
        Q_EMIT onVisibilityChanged(watched, false);
    }
    return QObject::eventFilter(watched, event);
}

} // namespace tools

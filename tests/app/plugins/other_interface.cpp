// A Qt plug-in that is none of this host: it implements another interface.

#include <QObject>
#include <QtPlugin>

class other_interface : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "SomeOtherProgram")
};

#include "other_interface.moc"

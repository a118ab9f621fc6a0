// A line debugger as another version of Qt would have it: what must not be loaded ends the program.

#include "tools/line_debugger.h"

#include <QObject>

class line_debugger_of_another_qt : public QObject, public tools::line_debugger
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KORVANE_LINE_DEBUGGER_IID FILE "line_debugger_of_another_qt.json")
    Q_INTERFACES(tools::line_debugger)

public:
    line_debugger_of_another_qt() { qFatal("the line debugger of another Qt was loaded"); }
    void install(QJSEngine &, const QString &, const std::shared_ptr<tools::line_stops> &) override {}
};

#include "line_debugger_of_another_qt.moc"

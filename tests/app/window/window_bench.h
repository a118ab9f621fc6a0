#pragma once

#include "app/window/diagram/diagram_panel.h"
#include "app/window/export/message_panel.h"
#include "app/window/export/script_panel.h"
#include "app/window/project_window.h"
#include "app/window/tree/project_tree.h"

#include "app/manual.h"
#include "context/ctx_global.h"
#include "support/program.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>

#include <memory>

namespace support {

/// The main window with the built plug-in, in a folder of its own with a project file, and with settings that
/// nobody else uses.
class window_bench
{
public:
    explicit window_bench(const QByteArray & text)
    {
        QCoreApplication::setOrganizationName(QStringLiteral("korvane"));
        QCoreApplication::setApplicationName(QStringLiteral("korvane"));
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, path(QStringLiteral("config")));
        qputenv("KORVANE_PLUGIN_PATH",
                QFile::encodeName(QFileInfo(QStringLiteral(KORVANE_PLUGIN_FILE)).absolutePath()));
        context::ctx_global::setAppHelpManualUrl(app::manualUrl());
        import(text);
    }

    [[nodiscard]] QString path(const QString & name = QString()) const { return m_folder.filePath(name); }
    [[nodiscard]] QString file() const { return path(QStringLiteral("shop.korv")); }
    void write(const QString & name, const QByteArray & content) const
    {
        QFile f(path(name));
        if (!f.open(QIODevice::WriteOnly) || f.write(content) != content.size()) {
            qFatal("cannot write %s", qPrintable(name));
        }
    }
    [[nodiscard]] QByteArray content(const QString & name) const
    {
        QFile f(path(name));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("(no such file)");
    }
    /// Makes the project file of `text`, or replaces its model, as another program would.
    void import(const QByteArray & text) const
    {
        write(QStringLiteral("shop.json"), text);
        run({QStringLiteral("import"), path(QStringLiteral("shop.json")), file()});
    }
    /// Runs the program's command line; what it prints.
    static QByteArray run(const QStringList & arguments)
    {
        const program_result result = runProgram(arguments);
        if (result.status != 0) {
            qFatal("%s: %s", qPrintable(arguments.join(QLatin1Char(' '))), result.errors.constData());
        }
        return result.output;
    }

    /// Shows a window, and in it the project.
    void open()
    {
        show();
        m_window->openFile(file());
    }
    void show()
    {
        m_window = std::make_unique<app::project_window>();
        m_window->show();
        m_window->activateWindow();
        if (!QTest::qWaitForWindowActive(m_window.get())) {
            qFatal("the window does not come up");
        }
    }
    void closeWindow()
    {
        m_window->close();
        m_window.reset();
    }

    /// Presses a key in the window, as the window system tells it.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        m_window->activateWindow();
        if (!QTest::qWaitForWindowActive(m_window.get())) {
            qFatal("the window does not come to the front");
        }
        QTest::keyClick(m_window->windowHandle(), key, modifiers);
    }

    [[nodiscard]] app::project_window & window() const { return *m_window; }
    template <class W>
    [[nodiscard]] W * find(const char * name = "") const
    {
        const QString wanted = QString::fromLatin1(name);
        W * const found = wanted.isEmpty() ? m_window->findChild<W *>() : m_window->findChild<W *>(wanted);
        if (!found) {
            qFatal("the window has no %s %s", W::staticMetaObject.className(), name);
        }
        return found;
    }
    [[nodiscard]] app::message_panel & messages() const { return *find<app::message_panel>(); }
    [[nodiscard]] app::script_panel & scripts() const { return *find<app::script_panel>(); }
    [[nodiscard]] app::project_tree & tree() const { return *find<app::project_tree>(); }
    [[nodiscard]] app::diagram_panel & diagram() const { return *find<app::diagram_panel>(); }
    [[nodiscard]] QAction * action(const char * name) const { return find<QAction>(name); }
    /// The messages of the window, one a line.
    [[nodiscard]] QString told() const
    {
        const auto * const list = messages().findChild<QAbstractItemView *>();
        QStringList lines;
        for (int row = 0; row < list->model()->rowCount(); ++row) {
            lines << list->model()->index(row, 0).data().toString();
        }
        return lines.join(QLatin1Char('\n'));
    }

private:
    QTemporaryDir m_folder;
    std::unique_ptr<app::project_window> m_window;
};

} // namespace support

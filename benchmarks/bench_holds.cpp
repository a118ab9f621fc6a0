// How long the main window holds its events, and how long of that nothing tells that it is busy:
// bench_holds PROJECT.korv NEXT.json
//
// PROJECT.korv is a project with a version; NEXT.json another state of it. What a person does with a large
// model is done in turn. A second thread looks every few milliseconds whether the window handles events, and
// whether the busy cursor or a progress bar is there.

#include "app/window/diagram/diagram_panel.h"
#include "app/window/project_window.h"
#include "app/window/tree/project_tree.h"
#include "support/modal_driver.h"

#include "context/ctx_project.h"
#include "model/project.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QProgressBar>
#include <QSettings>
#include <QTemporaryDir>

#include <atomic>
#include <chrono>
#include <functional>
#include <iostream>
#include <thread>

namespace {

using support::modal_driver;

qint64 now()
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

std::atomic<qint64> beganAt{
    0}; // the event that is handled, or the one after which work goes on; 0 when at rest
std::atomic<bool> hasProgress{false};

/// Notes when events are handled.
class watched_application : public QApplication
{
public:
    using QApplication::QApplication;
    bool notify(QObject * receiver, QEvent * event) override
    {
        const bool isOuter = m_depth++ == 0;
        beganAt = now();
        const bool result = QApplication::notify(receiver, event);
        --m_depth;
        beganAt = isOuter ? 0 : now();
        return result;
    }

private:
    int m_depth = 0;
};

/// The longest holds while it lives.
class watch
{
public:
    watch()
        : m_thread([this] {
              while (!m_isOver) {
                  look();
                  std::this_thread::sleep_for(std::chrono::milliseconds(3));
              }
          })
    {
    }
    ~watch()
    {
        m_isOver = true;
        m_thread.join();
    }
    watch(const watch &) = delete;
    watch & operator=(const watch &) = delete;

    [[nodiscard]] qint64 hold() const { return m_longest; }
    [[nodiscard]] qint64 withoutSign() const { return m_longestWithoutSign; }

private:
    void look()
    {
        const qint64 began = beganAt;
        if (began == 0) {
            m_signAt = 0;
            return;
        }
        const qint64 present = now();
        m_longest = std::max<qint64>(m_longest, present - began);
        if (QGuiApplication::overrideCursor() != nullptr || hasProgress) {
            m_signAt = present;
            return;
        }
        m_longestWithoutSign = std::max<qint64>(m_longestWithoutSign, present - std::max(began, m_signAt));
    }

    std::atomic<bool> m_isOver{false};
    std::atomic<qint64> m_longest{0};
    std::atomic<qint64> m_longestWithoutSign{0};
    qint64 m_signAt = 0;
    std::thread m_thread;
};

void measure(const char * what, const std::function<void()> & work)
{
    QTest::qWait(300);
    const watch seen;
    QTimer::singleShot(0, qApp, work);
    QTest::qWait(500);
    QTest::qWait(1500); // what there is to do afterwards
    std::cout << what << ": " << seen.hold() << " ms, without a sign " << seen.withoutSign() << " ms"
              << std::endl;
}

} // namespace

int main(int argc, char ** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    watched_application application(argc, argv);
    if (argc != 3) {
        std::cerr << "usage: bench_holds PROJECT.korv NEXT.json\n";
        return 2;
    }
    const QTemporaryDir settings;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    QCoreApplication::setOrganizationName(QStringLiteral("korvane"));
    const QString file = QDir::current().absoluteFilePath(QString::fromLocal8Bit(argv[1]));
    const QString text = QDir::current().absoluteFilePath(QString::fromLocal8Bit(argv[2]));
    app::project_window window;
    window.resize(1200, 800);
    window.show();
    auto * const progress = window.findChild<QProgressBar *>();
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer,
                     [progress] { hasProgress = progress && progress->isVisible(); });
    timer.start(10);
    const auto trigger = [&window](const char * name) {
        return [&window, name] { window.findChild<QAction *>(QString::fromLatin1(name))->trigger(); };
    };
    measure("open", [&] { window.openFile(file); });
    const auto entities = context::ctx_project::getSingleton().getProject()->getListOfAllEntities()->values();
    measure("choose an entity", [&] {
        window.findChild<app::diagram_panel *>()->selectEntity(entities[entities.size() / 2]->getId());
    });
    for (const char * const letters : {"e", "en", "ent", "1", ""}) {
        measure("filter", [&] {
            window.findChild<QLineEdit *>(QStringLiteral("m_txtFilter"))
                ->setText(QString::fromLatin1(letters));
        });
    }
    measure("save text", [&] {
        modal_driver driver({modal_driver::file(settings.filePath("saved.json"))});
        trigger("m_actSaveText")();
    });
    measure("import", [&] {
        modal_driver driver({modal_driver::file(text), modal_driver::key(Qt::Key_Return), [](QWidget * w) {
                                 QTest::qWait(300);
                                 modal_driver::press(QDialogButtonBox::Ok)(w);
                             }});
        trigger("m_actImport")();
    });
    measure("reload", trigger("m_actReload"));
    measure("changes", trigger("m_actGoChanges"));
    measure("diagram", trigger("m_actGoDiagram"));
    measure("mark changes", trigger("m_actMarkChanges"));
    measure("check", trigger("m_actCheck_KorvGenericDDLExport"));
    measure("versions", [&] {
        modal_driver driver({[](QWidget * w) {
            QTest::qWait(300);
            QTest::keyClick(w, Qt::Key_Escape);
        }});
        trigger("m_actVersions")();
    });
    measure("tag", [&] {
        modal_driver driver({[](QWidget * w) {
            QTest::qWait(300);
            QTest::keyClick(w, Qt::Key_Return);
        }});
        trigger("m_actTag")();
    });
    measure("export", trigger("m_actExport_KorvGenericDDLExport"));
    measure("close", trigger("m_actClose"));
    return 0;
}

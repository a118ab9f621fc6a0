// What the main window needs for a project: bench_window PROJECT.korv [RUNS]
//
// Prints the medians of RUNS runs in milliseconds: opening the project until the window is at rest (on the
// clock, and the processor's time, which counts on a busy machine), a letter in the filter (the processor's
// time, since the field waits for the next letter first), choosing an entity until its neighbourhood is laid
// out.

#include "app/window/diagram/diagram_panel.h"
#include "app/window/project_window.h"
#include "app/window/tree/project_tree.h"

#include "context/ctx_project.h"
#include "model/project.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <ctime>
#include <iostream>
#include <vector>

namespace {

using numbers = std::vector<double>;

double median(numbers values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

/// Processor time of this process in milliseconds.
double processorTime()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

void handleEventsFor(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

struct measured
{
    numbers open;
    numbers openWork;
    numbers filter;
    numbers choose;
};

void measure(const QString & file, measured & result)
{
    app::project_window window;
    window.show();
    handleEventsFor(50);
    QElapsedTimer timer;
    timer.start();
    const double begin = processorTime();
    window.openFile(file);
    QCoreApplication::processEvents();
    result.open.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
    result.openWork.push_back(processorTime() - begin);
    handleEventsFor(1500); // what the window still has to do when it is idle

    auto * const filter = window.findChild<QLineEdit *>(QStringLiteral("m_txtFilter"));
    for (const char * const text : {"e", "en", "ent", "1", "12", "zzz", ""}) {
        const double before = processorTime();
        filter->setText(QString::fromLatin1(text));
        handleEventsFor(400);
        result.filter.push_back(processorTime() - before);
    }

    auto * const diagram = window.findChild<app::diagram_panel *>();
    const auto entities = context::ctx_project::getSingleton().getProject()->getListOfAllEntities()->values();
    for (const size_t part : {2U, 3U, 5U}) {
        QEventLoop loop;
        QObject::connect(diagram, &app::diagram_panel::layoutFinished, &loop, &QEventLoop::quit);
        QTimer::singleShot(20000, &loop, &QEventLoop::quit);
        timer.start();
        diagram->selectEntity(entities[entities.size() / part]->getId());
        loop.exec();
        result.choose.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
}

} // namespace

int main(int argc, char ** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    if (argc < 2) {
        std::cerr << "usage: bench_window PROJECT.korv [RUNS]\n";
        return 2;
    }
    const QTemporaryDir settings;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    QCoreApplication::setOrganizationName(QStringLiteral("korvane"));
    measured result;
    const int runs = argc > 2 ? std::max(1, std::atoi(argv[2])) : 5;
    for (int run = 0; run < runs; ++run) {
        measure(QString::fromLocal8Bit(argv[1]), result);
    }
    std::cout << "open " << median(result.open) << " ms (the processor's " << median(result.openWork)
              << "), filter " << median(result.filter) << " ms (worst "
              << *std::max_element(result.filter.begin(), result.filter.end()) << "), choose an entity "
              << median(result.choose) << " ms\n";
    return 0;
}

#pragma once

#include <QString>

class QWidget;

/// The commands that explain the program, or show something outside of it.
namespace app {

struct found_plugins;

void showManual(QWidget * parent);
void showAbout(QWidget * parent, const found_plugins & found);
/// Opens `folder` in the program that the desktop has for folders.
void showFolder(QWidget * parent, const QString & folder);

} // namespace app

#pragma once

#include <QDir>
#include <QString>

namespace pictures {

/// Takes the pictures of the main window in the colours that the application has.
/// @param scheme the part of the files' names that tells the colours
/// @param all more states than the manual shows
void takeWindow(const QDir & folder, const QString & scheme, bool all);

} // namespace pictures

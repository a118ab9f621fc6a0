#pragma once

#include <QDir>
#include <QPalette>
#include <QString>
#include <QWidget>

#include <iostream>

/// What the pictures of the manual have in common.
namespace pictures {

inline QPalette darkPalette()
{
    QPalette dark;
    const QColor window(0x2b, 0x2d, 0x30);
    const QColor text(0xe6, 0xe6, 0xe6);
    const QColor quiet(0x8c, 0x8f, 0x94);
    dark.setColor(QPalette::Window, window);
    dark.setColor(QPalette::Base, QColor(0x1e, 0x1f, 0x22));
    dark.setColor(QPalette::AlternateBase, QColor(0x26, 0x28, 0x2b));
    dark.setColor(QPalette::Button, QColor(0x3a, 0x3d, 0x41));
    dark.setColor(QPalette::ToolTipBase, window);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                                           QPalette::ToolTipText, QPalette::BrightText}) {
        dark.setColor(role, text);
        dark.setColor(QPalette::Disabled, role, quiet);
    }
    dark.setColor(QPalette::PlaceholderText, quiet);
    dark.setColor(QPalette::Highlight, QColor(0x2f, 0x65, 0xca));
    dark.setColor(QPalette::HighlightedText, Qt::white);
    dark.setColor(QPalette::Link, QColor(0x6a, 0xa5, 0xff));
    return dark;
}

/// Writes what `window` shows as FOLDER/NAME_SCHEME.png.
inline void save(QWidget & window, const QDir & folder, const char * name, const QString & scheme)
{
    const QString file = folder.filePath(QStringLiteral("%1_%2.png").arg(QLatin1String(name), scheme));
    if (!window.grab().save(file)) {
        qFatal("cannot write %s", qPrintable(file));
    }
    std::cout << qPrintable(file) << '\n';
}

} // namespace pictures

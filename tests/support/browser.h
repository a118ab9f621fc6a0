#pragma once

#include <QDesktopServices>
#include <QList>
#include <QObject>
#include <QUrl>

namespace support {

/// Takes the place of the programs that open files for the person, a web browser among them. A test links
/// browser_support.
class browser : public QObject
{
    Q_OBJECT

public:
    browser() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open"); }
    ~browser() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }
    QList<QUrl> opened;

public Q_SLOTS:
    void open(const QUrl & url) { opened.append(url); }
};

} // namespace support

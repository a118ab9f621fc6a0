#pragma once

#include "korvane_global.h"

#include <QObject>

namespace tools {

/// Reports when a widget that it is installed on (QObject::installEventFilter) is shown or hidden.
class KORVANE_EXPORT event_filter : public QObject
{
    Q_OBJECT

public:
    explicit event_filter(QObject * parent);
    ~event_filter() override;

    bool eventFilter(QObject * watched, QEvent * event) override;

Q_SIGNALS:
    void onVisibilityChanged(QObject * watched, bool visible);
};

} // namespace tools

#pragma once

#include <QObject>

namespace app {

/// Keeps the colours of the application legible: placeholders and selected text of many themes are too near
/// to what lies behind them. All other colours stay the theme's, also when that changes.
class legible_colours : public QObject
{
    Q_OBJECT

public:
    /// Takes effect at once.
    explicit legible_colours(QObject * parent = nullptr);

protected:
    bool eventFilter(QObject * watched, QEvent * event) override;

private:
    void apply();

    bool m_isApplying = false;
};

} // namespace app

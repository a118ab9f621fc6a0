#pragma once

#include <QObject>

namespace app {

/// Knows, while it lives, how the last dialog that was shown came to its end.
class dialog_watch : public QObject
{
    Q_OBJECT

public:
    dialog_watch();

    /// Whether the person gave up the last dialog; false when there was none.
    [[nodiscard]] bool isLastGivenUp() const { return m_bGivenUp; }

protected:
    bool eventFilter(QObject * watched, QEvent * event) override;

private:
    bool m_bGivenUp = false;
};

} // namespace app

#pragma once

#include <QPointer>

#include <utility>

namespace tools {

/// A dialog for one question. Its parent may be deleted while it is shown, and deletes it then, which a
/// dialog on the stack would not survive.
template <class Dialog>
class held_dialog
{
public:
    template <class... Arguments>
    explicit held_dialog(Arguments &&... arguments)
        : m_pDialog(new Dialog(std::forward<Arguments>(arguments)...))
    {
    }
    ~held_dialog() { delete m_pDialog.data(); }
    held_dialog(const held_dialog &) = delete;
    held_dialog & operator=(const held_dialog &) = delete;

    Dialog * operator->() const { return m_pDialog.data(); }
    /// Shows the dialog until it is answered. When it is gone by then the answer is 0, as for one that was
    /// rejected, and the caller, which may have been the parent, must touch no member any more.
    int exec() const { return m_pDialog->exec(); }

private:
    QPointer<Dialog> m_pDialog;
};

} // namespace tools

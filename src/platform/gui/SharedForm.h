#pragma once

#include "platform/gui/WindowOwner.h"

#include <QPointer>

/// The one instance of a window class: loaded on first use, gone when it is unloaded or, for windows that delete
/// themselves, closed.
template<typename Form>
class SharedForm
{
public:
    static Form &instance()
    {
        if (!s_instance)
            s_instance = new Form;
        return *s_instance;
    }
    static bool isLoaded() { return !s_instance.isNull(); }
    static void unload() { delete s_instance.data(); }

    /// Loads the form, shows it until it is closed and unloads it. @returns what exec() gives.
    static int showModal()
    {
        const struct Unload {
            ~Unload() { unload(); }
        } atTheEnd;
        QWidget *owner = windowOwner();
        Form &form = instance();
        form.setParent(owner, form.windowFlags());
        return execOver(form);
    }

private:
    static inline QPointer<Form> s_instance;
};

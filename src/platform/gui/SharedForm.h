#pragma once

#include <memory>

/// The one instance of a window class: loaded on first use, gone when it is unloaded.
template<typename Form>
class SharedForm
{
public:
    static Form &instance()
    {
        if (!s_instance)
            s_instance.reset(new Form);
        return *s_instance;
    }
    static bool isLoaded() { return s_instance != nullptr; }
    static void unload() { s_instance.reset(); }

    /// Loads the form, shows it until it is closed and unloads it. @returns what exec() gives.
    static int showModal()
    {
        const struct Unload {
            ~Unload() { unload(); }
        } atTheEnd;
        return instance().exec();
    }

private:
    static inline std::unique_ptr<Form> s_instance;
};

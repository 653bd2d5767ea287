#pragma once

#include <QObject>

#include <functional>

/// Runs one action of the user. An error that the action does not trap ends it and is shown in the words of the
/// engine, as a critical box; the program goes on. Nothing may be thrown through the event loop.
void runUserAction(const std::function<void()> &action);

/// Connects `signal` to the handler of a window, run as a user action. The handler takes as many of the signal's
/// arguments as it declares.
template<typename Sender, typename Signal, typename Receiver, typename Form, typename... Arguments>
void onUserAction(Sender *sender, Signal signal, Receiver *form, void (Form::*handler)(Arguments...))
{
    QObject::connect(sender, signal, form, [form, handler](Arguments... arguments) {
        runUserAction([&] { (form->*handler)(arguments...); });
    });
}

/// The same for an action that is no member: a menu entry that calls somebody else's procedure.
template<typename Sender, typename Signal>
void onUserAction(Sender *sender, Signal signal, std::function<void()> action)
{
    QObject::connect(sender, signal, sender, [action = std::move(action)] { runUserAction(action); });
}

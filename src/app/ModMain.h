#pragma once

/// Start-up of the program.
namespace ModMain {

/// Refuses a second running copy, opens the database in the crib folder, looks for the suite's main program and
/// shows the main window, in that order. Nothing is shown when a step fails but the reason.
/// @returns the exit status of the process, after its last window is closed.
int Main();

}

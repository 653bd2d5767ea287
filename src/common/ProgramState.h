#pragma once

/// What the whole program knows and no window owns.
namespace ProgramState {

/// The suite's main program lies beside this one; tested once at start-up.
inline bool SuiteInstalled = false;

}

#pragma once

/// What the whole program knows and no window owns.
namespace ProgramState {

/// The suite's main program lies beside this one; tested once at start-up.
inline bool SuiteInstalled = false;
/// The list window of locations or of types is open.
inline bool LocationListOpen = false;
inline bool TypeListOpen = false;

}

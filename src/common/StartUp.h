#pragma once

namespace ModMain {

/// Opens the crib's database for the run and looks for the suite's main program. False, after it has been said, when
/// there is no database. @throws EngineError for all else that is wrong with it.
bool openCrib();

}

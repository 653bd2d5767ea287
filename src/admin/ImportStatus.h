#pragma once

/// Exit statuses of vorlane-admin import. From Usage on there is no new file.
namespace ImportStatus {
enum : int {
    Imported,
    WithNotes,
    Usage,
    NotReadable, ///< in use, no Jet database, a newer format, its password not given
    Damaged,
    Content, ///< something in the old file does not fit
    CannotWrite,
    Differs, ///< the new file is not what was read
};
}

#pragma once

#include <QString>

class QWidget;

/// What the user is asked for a file that is to be written.
struct SaveDialog {
    QString caption;
    QString name; ///< suggested, without its ending
    QString filter;
    QString ending;

    /// @returns the file's path, empty when the user gave up. Whether a file may be replaced has been asked.
    QString ask(QWidget *over) const;
};

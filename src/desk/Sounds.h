#pragma once

#include "desk/Answer.h"

#include <QProcess>
#include <QTemporaryDir>

/// The desk's short sounds: tones of its own, played by whatever program of the desktop plays sounds; without one that
/// can, as on Windows, the desktop's bell for all of them.
class Sounds
{
public:
    Sounds();

    void play(Answer::Sound sound);

private:
    QString fileOf(Answer::Sound sound);

    QTemporaryDir m_folder;
    QStringList m_players; ///< the first one plays
    QProcess m_process;
    Answer::Sound m_playing = Answer::SoundDone;
};

#pragma once

#include "desk/Answer.h"

#include <QProcess>
#include <QTemporaryDir>

/// The desk's short sounds: tones of its own, played by whatever the desktop plays sounds with; without such a program
/// the desktop's bell.
class Sounds
{
public:
    Sounds();

    void play(Answer::Sound sound);

private:
    QString fileOf(Answer::Sound sound);

    QTemporaryDir m_folder;
    QString m_player;
    QProcess m_process;
    Answer::Sound m_playing = Answer::SoundDone;
};

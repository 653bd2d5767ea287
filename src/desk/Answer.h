#pragma once

#include "desk/Code.h"

#include <QList>

/// What the desk says to a scan: a sound, a colour and one line of words.
struct Answer {
    enum Tone {
        Done,
        Attention, ///< the attendant has to do or to look at something
        Refused,
        Waiting, ///< the crib is held by somebody else; the scan is kept
    };
    /// Those of the tones first; then the results of a count that have one of their own.
    enum Sound {
        SoundDone,
        SoundAttention,
        SoundRefused,
        SoundWaiting,
        SoundElsewhere,
        SoundOut,
        SoundScrapped,
        SoundUnknown,
        SoundAlready
    };
    /// How much it matters to have heard this one of several: from done over waiting and attention to refused.
    static int gravity(Sound sound)
    {
        switch (sound) {
        case SoundDone:
            return 0;
        case SoundWaiting:
            return 1;
        case SoundRefused:
        case SoundScrapped:
        case SoundUnknown:
            return 3;
        default:
            return 2;
        }
    }
    /// One of several things that were found; its code is scanned when it is chosen.
    struct Choice {
        Code code;
        QString text;
        QString detail;
        int icon = 0; ///< an ItemIcon
    };

    Tone tone = Done;
    QString words = {};
    QList<Choice> choices = {};
    Sound sound = Sound(int(tone));
};

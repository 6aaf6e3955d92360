#pragma once

#include <QMetaType>
#include <QString>

/** What came of a command at the device, as far as its client knows. */
struct CommandAnswer
{
    enum class Kind {
        Taken,    ///< the client has it, and sends it when its turn comes
        Accepted, ///< the driver says that the device did it
        Refused,  ///< it did not, and answers otherwise
        NoAnswer, ///< it did not answer: the command may have come through, or not
        NotSent,  ///< there was no way to the device
    };

    int command = 0; ///< number of the host contract
    QString value;   ///< the command's own
    Kind kind = Kind::NotSent;
};

Q_DECLARE_METATYPE(CommandAnswer)

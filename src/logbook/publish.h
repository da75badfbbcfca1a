#pragma once

#include "platform/mail.h"
#include "platform/programfolder.h"

#include <QStringList>

namespace benthor::logbook {

// A dive as a mail, and the list as a spreadsheet. Cells are those of the list as shown, by display column.

/// What is mailed of the dive of one row.
struct PublishedDive {
    QString recipient;
    QString note; ///< what the diver has to say
    QStringList headers;
    QStringList cells;
    QString location;  ///< name of the dive as the summary strip shows it
    QString dbtxtname; ///< name of its text file in dbtxt; may be empty
};

struct Publication {
    platform::MailMessage message;
    QString refusal; ///< why nothing can be sent; the message is then empty
};

/// The message of a dive with its attachments: the dive's file from `old`, else from `corrupt`, and what is
/// there of its pictures in `jpg`. Without the dive's file nothing is sent.
Publication publishdive(const platform::ProgramFolder& folder, const PublishedDive& dive);

/// The text of the message: its opening, the diver's note, the sign-off, and a line for each column.
QString publishtext(const PublishedDive& dive);

/// How many columns of the list go into a spreadsheet: the first ones.
inline constexpr qsizetype kSheetColumns = 8;

/// The first columns of the header, and of one row, a comma behind each; an empty cell of a row is "NA".
/// Nothing is quoted. The line ends in CR LF; texts are UTF-8.
QByteArray spreadsheetheader(const QStringList& headers);
QByteArray spreadsheetrow(const QStringList& cells);

} // namespace benthor::logbook

#pragma once

#include <QString>
#include <QStringList>

namespace benthor::shell {

// What was typed behind `benthor`, understood or refused.

struct CommandLine {
    bool help = false;
    bool version = false;
    QString folder; ///< program folder; empty: the program's own
    QString file;   ///< to be opened, as an absolute path; empty: none
    QString error;  ///< what is wrong with the words, for a person; empty where nothing is
};

/// `words`: all that stands behind the program's name. A relative file is looked for from the current folder.
CommandLine readCommandLine(const QStringList& words);

/// Whether a word is an option of the toolkit's ("-platform", "-session"), which takes its own out once there
/// is a display. What is wrong with the words is not known before.
bool mayHoldToolkitWords(const QStringList& words);

QString helpText();
QString versionText();

} // namespace benthor::shell

#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

namespace benthor::ctl {

// Data goes to standard output and everything else to standard error, in UTF-8.

/// Standard output, in blocks. Every call but the destructor throws Failure where it does not take the bytes;
/// what was not flushed at the end is lost.
class Output {
public:
    void bytes(const QByteArray& bytes);
    void line(const QString& text);
    /// As one document, indented.
    void json(const QJsonObject& object);
    void flush();

private:
    QByteArray waiting_;
};

/// "{"name": [", an item a line, "]}": for lists of any length.
class JsonList {
public:
    JsonList(Output& output, const char* name);
    void item(const QJsonObject& object);
    void end();

private:
    Output& output_;
    bool any_ = false;
};

/// Lines on standard error, as they can be shown.
void tell(const QString& text);

/// One line on standard error that changes as the work goes on; nothing where that is no terminal. Gone with
/// this.
class Progress {
public:
    explicit Progress(QString what);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    void show(qint64 done, qint64 of);

private:
    QString what_;
    bool isShown_ = false;
    bool isTerminal_;
    qint64 last_ = -1; ///< hundredths, so that a line is not written for each of many steps
};

/// Columns of the terminal that standard output is; 0 where it is none.
int terminalWidth();

} // namespace benthor::ctl

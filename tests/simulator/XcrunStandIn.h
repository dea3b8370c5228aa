#pragma once
// A tiny `xcrun` for tests of the model's simulator operations: a shell
// script, first on PATH while the object lives, that records every call and
// answers each simctl subcommand from files the test sets.

#include <QByteArray>
#include <QImage>
#include <QList>
#include <QStringList>
#include <QTemporaryDir>

class XcrunStandIn
{
public:
    XcrunStandIn();
    ~XcrunStandIn(); // restores PATH

    // The answer to `xcrun simctl SUBCOMMAND ...`; for `io` the key is
    // "io-enumerate" or "io-screenshot".
    void respond(const QString &key, const QByteArray &standardOutput, int status = 0,
                 const QByteArray &standardError = {});
    // What `io screenshot PATH` writes to PATH.
    void setScreenshot(const QImage &image);

    // The arguments of every call so far, in order.
    QList<QStringList> calls() const;

private:
    QTemporaryDir m_dir;
    QByteArray m_savedPath;
};

#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// What is said over a service's control socket: one line a message, UTF-8, ended by '\n'.
// Requests: "state", "pause", "resume", "terminate", "command N". Replies: "ok [TEXT]" and
// "error TEXT"; a second "ok" follows that to "terminate" when the stop is complete. N has one spelling: no blank, no '+', no needless zero. A longer line than the limit,
// or anything else, ends the connection.

/** Bytes of one line at most, its end included. */
constexpr int controlLineLimit = 256;

enum class ControlVerb { State, Pause, Resume, Terminate, Command };

struct ControlRequest
{
    ControlVerb verb = ControlVerb::State;
    int command = 0; // of Command
};

struct ControlReply
{
    bool ok = false;
    QString text;
};

/** @param line  without its end
 *  @return nothing unless the line is exactly one request */
std::optional<ControlRequest> parseControlRequest(const QByteArray &line);
std::optional<ControlReply> parseControlReply(const QByteArray &line);

/** The whole line; a reply's text is cut to fit and loses its line ends. */
QByteArray controlLine(const ControlRequest &request);
QByteArray controlLine(const ControlReply &reply);

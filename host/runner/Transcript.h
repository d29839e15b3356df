// The transcript's text form: one JSON document, stable and readable in a line diff.
#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

namespace runner {

// Writes a transcript (or any JSON object) in its canonical form: the top-level keys "result",
// "open", "events" first, each on its own line; every element of a top-level array on one line;
// inside objects "event", "name", "key" and "text" lead and the other keys follow in name order.
// Texts are escaped so that CR, LF and tab show as \r, \n and \t.
QByteArray CanonicalJson(const QJsonObject& document);

// The largest scenario file the runner reads (16 MiB); a larger one is refused unread.
inline constexpr qint64 kMaxScenarioBytes = 16 * 1024 * 1024;

// Reads a scenario file of at most kMaxScenarioBytes (a device such as /dev/zero included):
// false with the reason when it cannot be read or is larger.
bool ReadCapped(const QString& file, QByteArray* text, QString* why);

// The runner's --timeout value in milliseconds; -1 with the reason when the text is no number
// of seconds the watchdogs can wait (0.001 up to about 24 days).
int TimeoutMs(const QString& seconds, QString* why);

// Parses `text` as a JSON object; empty object and a message in `error` on failure.
QJsonObject ParseObject(const QByteArray& text, QString* error);

}  // namespace runner

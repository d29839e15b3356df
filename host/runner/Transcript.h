// The transcript's text form: one JSON document, stable and readable in a line diff.
#pragma once

#include <QByteArray>
#include <QJsonObject>

namespace runner {

// Writes a transcript (or any JSON object) in its canonical form: the top-level keys "result",
// "open", "events" first, each on its own line; every element of a top-level array on one line;
// inside objects "event", "name", "key" and "text" lead and the other keys follow in name order.
// Texts are escaped so that CR, LF and tab show as \r, \n and \t.
QByteArray CanonicalJson(const QJsonObject& document);

// Parses `text` as a JSON object; empty object and a message in `error` on failure.
QJsonObject ParseObject(const QByteArray& text, QString* error);

}  // namespace runner

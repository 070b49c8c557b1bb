#pragma once

#include <zeltools/zeltools_export.h>

#include <QByteArray>
#include <QString>

#include <optional>

namespace zeltools::declarativestatemachine
{

/// Draws the text of toDot() as an SVG document. The function runs the program `dot` of Graphviz
/// and blocks until it has ended, at most 60 seconds, after which it is killed: some hundred
/// states are drawn in that time. Returns no value and the reason in `error` if the program is
/// missing, fails or takes too long.
ZELTOOLS_EXPORT std::optional<QByteArray> toSvg(const QString& dot, QString& error);

} // namespace zeltools::declarativestatemachine

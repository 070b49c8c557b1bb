#pragma once

#include <QString>
#include <QVector>

/// A bar of a picture that compares durations.
struct Bar
{
    QString name; ///< plain text without the special characters of XML
    double value_ms;
};

/// Lines of text with a bar each, in proportion to the longest one.
QString barsAsText(const QVector<Bar>& bars);

/// The same bars as an SVG document with the title above them.
QString barsAsSvg(const QString& title, const QVector<Bar>& bars);

#include "barpicture.h"

#include <algorithm>

namespace
{

// At least 1, so that every bar is seen.
int length(const Bar& bar, const QVector<Bar>& bars, int longest)
{
    double most_ms = 0;
    for (const Bar& other : bars)
        most_ms = std::max(most_ms, other.value_ms);
    return most_ms > 0 ? std::max(1, qRound(bar.value_ms / most_ms * longest)) : 1;
}

QString valueText(const Bar& bar)
{
    return QString::number(bar.value_ms, 'f', bar.value_ms < 10 ? 3 : 0) + QLatin1String(" ms");
}

} // namespace

QString barsAsText(const QVector<Bar>& bars)
{
    constexpr int nameWidth = 12, longest = 60;
    QString text;
    for (const Bar& bar : bars) {
        text += QLatin1String("  ") + bar.name.leftJustified(nameWidth) +
                QString(length(bar, bars, longest), QLatin1Char('#')) + QLatin1Char(' ') +
                valueText(bar) + QLatin1Char('\n');
    }
    return text;
}

QString barsAsSvg(const QString& title, const QVector<Bar>& bars)
{
    constexpr int rowHeight = 30, barLeft = 110, longest = 450;
    QString rows;
    int top = rowHeight;
    for (const Bar& bar : bars) {
        const int width = length(bar, bars, longest);
        rows += QStringLiteral("<text x=\"10\" y=\"%1\">%2</text>\n"
                               "<rect x=\"%3\" y=\"%4\" width=\"%5\" height=\"18\" "
                               "fill=\"steelblue\"/>\n"
                               "<text x=\"%6\" y=\"%1\">%7</text>\n")
                    .arg(top + 19)
                    .arg(bar.name)
                    .arg(barLeft)
                    .arg(top + 5)
                    .arg(width)
                    .arg(barLeft + width + 8)
                    .arg(valueText(bar));
        top += rowHeight;
    }
    return QStringLiteral("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"660\" height=\"%1\" "
                          "font-family=\"sans-serif\" font-size=\"14\">\n"
                          "<text x=\"10\" y=\"20\" font-weight=\"bold\">%2</text>\n%3</svg>\n")
        .arg(top + 10)
        .arg(title, rows);
}

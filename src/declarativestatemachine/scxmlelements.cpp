#include "declarativestatemachine/scxmlelements_p.h"

#include <QRegularExpression>

#include <cmath>
#include <limits>
#include <optional>

namespace zeltools::declarativestatemachine
{

namespace
{

bool isEventName(const QString& text)
{
    static const QRegularExpression name(QStringLiteral("\\A[^\\s.*]++(?:\\.[^\\s.*]++){0,15}\\z"));
    return name.match(text).hasMatch();
}

std::optional<std::chrono::milliseconds> timeOf(const QString& text)
{
    static const QRegularExpression time(
        QStringLiteral("\\A([0-9]{0,10}(?:\\.[0-9]{1,9})?)(ms|s)\\z"));
    const QRegularExpressionMatch match = time.match(text);
    bool isNumber = false;
    const double number = match.captured(1).toDouble(&isNumber);
    const double exact_ms = match.captured(2) == QLatin1String("s") ? number * 1000 : number;
    const double rounded_ms = std::round(exact_ms);
    constexpr double noise_ms = 1e-5;
    if (!isNumber || rounded_ms > std::numeric_limits<int>::max() ||
        std::abs(exact_ms - rounded_ms) > noise_ms)
        return std::nullopt;
    return std::chrono::milliseconds(static_cast<qint64>(rounded_ms));
}

// QXmlStreamReader compares each attribute of an element with each other one, which takes quadratic
// time, before it returns the element. Whatever looks like an attribute is counted.
bool hasCrowdedElement(const QString& text)
{
    constexpr int maximumAttributes = 100;
    int attributes = 0;
    bool isAfterEquals = false;
    for (const QChar c : text) {
        if (c == QLatin1Char('<'))
            attributes = 0;
        else if (isAfterEquals && (c == QLatin1Char('"') || c == QLatin1Char('\'')))
            ++attributes;
        if (attributes > maximumAttributes)
            return true;
        isAfterEquals = c == QLatin1Char('=') || (isAfterEquals && c.isSpace());
    }
    return false;
}

} // namespace

ScxmlElements::ScxmlElements(const QString& text)
    : m_xml(text)
{
    if (hasCrowdedElement(text))
        refuse(QStringLiteral("an element has more than 100 attributes"));
    // The reader looks for the prefix of each attribute in all declarations.
    constexpr int maximumNamespaces = 100;
    if (text.count(QLatin1String("xmlns")) > maximumNamespaces)
        refuse(QStringLiteral("there are more than 100 declarations of namespaces"));
}

// The editor of Qt Creator keeps the places of its pictures in elements of its own.
bool ScxmlElements::next()
{
    while (!m_xml.atEnd()) {
        switch (m_xml.readNext()) {
        case QXmlStreamReader::StartElement:
            if (m_xml.namespaceUri() == scxmlNamespace)
                return true;
            if (m_xml.namespaceUri() == QLatin1String("http://www.qt.io/2015/02/scxml-ext") &&
                isAt("editorinfo"))
                m_xml.skipCurrentElement();
            else
                refuseElement();
            break;
        case QXmlStreamReader::EndElement:
        case QXmlStreamReader::EndDocument:
            return false;
        case QXmlStreamReader::DTD:
        case QXmlStreamReader::EntityReference:
            refuse(QStringLiteral("document types and entities are not supported"));
            break;
        case QXmlStreamReader::Characters:
            if (!m_xml.isWhitespace())
                refuse(QStringLiteral("text is not supported"));
            break;
        default:
            break; // comments and processing instructions
        }
    }
    return false;
}

void ScxmlElements::refuse(const QString& reason)
{
    if (!isRefused())
        m_xml.raiseError(reason);
}

void ScxmlElements::refuseElement()
{
    refuse(QStringLiteral("<%1> is not supported here").arg(m_xml.qualifiedName().toString()));
}

void ScxmlElements::finish()
{
    if (next())
        refuseElement();
}

QString ScxmlElements::error() const
{
    return QStringLiteral("line %1: %2").arg(m_xml.lineNumber()).arg(m_xml.errorString());
}

ScxmlElements::Attributes ScxmlElements::attributes(const QStringList& allowed)
{
    Attributes found;
    const QXmlStreamAttributes all = m_xml.attributes();
    for (const QXmlStreamAttribute& attribute : all) {
        QString name = attribute.name().toString();
        if (attribute.namespaceUri() == scxmlExtensionNamespace)
            name.prepend(QLatin1String("zel:"));
        else if (!attribute.namespaceUri().isEmpty())
            continue;
        if (!allowed.contains(name) && !allowed.contains(name + QLatin1Char('!')))
            refuse(QStringLiteral("the attribute %1 is not supported here").arg(name));
        const bool mayBeEmpty =
            name.endsWith(QLatin1String("name")) || name == QLatin1String("label");
        if (attribute.value().isEmpty() && !mayBeEmpty)
            refuse(QStringLiteral("the attribute %1 is empty").arg(name));
        found.insert(name, attribute.value().toString());
    }
    for (const QString& name : allowed) {
        if (name.endsWith(QLatin1Char('!')) && !found.contains(name.chopped(1)))
            refuse(QStringLiteral("the attribute %1 is missing").arg(name.chopped(1)));
    }
    return found;
}

QString ScxmlElements::choice(const Attributes& found, const char* name, const QStringList& values)
{
    QString value = found.value(QLatin1String(name), values.first());
    if (!values.contains(value))
        refuse(QStringLiteral("%1=\"%2\" is not supported").arg(QLatin1String(name), value));
    return value;
}

QString ScxmlElements::event(const Attributes& found)
{
    QString event = found.value(QStringLiteral("event"));
    if (!event.isNull() && !isEventName(event))
        refuse(QStringLiteral("\"%1\" is not the name of one event").arg(event));
    return event;
}

std::chrono::milliseconds ScxmlElements::time(const Attributes& found, const char* name)
{
    const QString text = found.value(QLatin1String(name), QStringLiteral("0ms"));
    const auto time = timeOf(text);
    if (!time)
        refuse(QStringLiteral("\"%1\" is not a time such as 1500ms or 1.5s").arg(text));
    return time.value_or(std::chrono::milliseconds(0));
}

} // namespace zeltools::declarativestatemachine

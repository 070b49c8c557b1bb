#pragma once

#include <QHash>
#include <QStringList>
#include <QXmlStreamReader>

#include <chrono>

namespace zeltools::declarativestatemachine
{

inline const QLatin1String scxmlNamespace("http://www.w3.org/2005/07/scxml");
inline const QLatin1String scxmlExtensionNamespace("urn:zeltools:statemachine");

/// Goes through the elements of a State Chart XML document in their order. The first refusal ends
/// the way: no element follows, and further refusals are ignored.
class ScxmlElements
{
public:
    using Attributes = QHash<QString, QString>;

    /// A text that would take too much time is refused at once.
    explicit ScxmlElements(const QString& text);

    /// Goes to the next element inside the present one. Returns false at the end of this one, and
    /// after a refusal. Text, document types, entities and elements of other namespaces are
    /// refused.
    bool next();

    bool isAt(const char* element) const { return m_xml.name() == QLatin1String(element); }
    qint64 line() const { return m_xml.lineNumber(); }

    void refuse(const QString& reason);
    void refuseElement();
    /// Goes to the end of the element and refuses any element in it.
    void finish();
    bool isRefused() const { return m_xml.hasError(); }
    /// The line and the reason of the refusal.
    QString error() const;

    /// The attributes of the present element; any that is not among the allowed ones is refused. A
    /// "!" behind a name demands the attribute. An attribute of the extensions has "zel:" in front
    /// of its name. Those of other namespaces are skipped.
    Attributes attributes(const QStringList& allowed);

    /// The value of an attribute, or the first of the values if it is absent; a value that is not
    /// among them is refused.
    QString choice(const Attributes& found, const char* name, const QStringList& values);

    /// The attribute `event`, which must name one event; null if it is absent.
    QString event(const Attributes& found);

    /// A time such as "1500ms" or "1.5s" of whole milliseconds; 0 if the attribute is absent.
    std::chrono::milliseconds time(const Attributes& found, const char* name);

private:
    QXmlStreamReader m_xml;
};

} // namespace zeltools::declarativestatemachine

#include "envvar/envvar.h"

#include "envvar/envvarstore.h"

#include <stdexcept>

namespace zeltools::envvar
{

QString typeToString(Type type)
{
    switch (type) {
    case String:
        return QStringLiteral("String");
    case Integer:
        return QStringLiteral("Integer");
    case Boolean:
        break;
    }
    return QStringLiteral("Boolean");
}

EnvVar::EnvVar(const char* name, const char* description, Category category, Flags flags, Type type)
    : m_name(QString::fromLatin1(name))
    , m_description(QString::fromLatin1(description))
    , m_category(category)
    , m_flags(flags)
{
    EnvVarStore::instance().addEnvVar(this, type);
}

EnvVar::~EnvVar() = default;

void EnvVar::setFlag(Flag flag, bool on)
{
    m_flags.setFlag(flag, on);
    Q_EMIT changed();
}

std::optional<QString> EnvVar::stringValueOpt(ValueType source) const
{
    const auto value = m_values.find(source);
    return value != m_values.end() ? std::optional(*value) : std::nullopt;
}

std::optional<QString> EnvVar::stringValueOpt() const
{
    const std::optional<QString> value = stringValueOpt(Env);
    return value ? value : stringValueOpt(Defines);
}

void EnvVar::setStringValueOpt(ValueType source, std::optional<QString> value)
{
    if (value && !isStringValueValid(*value)) {
        throw std::invalid_argument("Invalid value " + value->toStdString() + " for variable " +
                                    m_name.toStdString());
    }
    if (value)
        m_values.insert(source, *std::move(value));
    else if (m_values.contains(source)) // remove() allocates even if it finds nothing.
        m_values.remove(source);
    const std::optional<QString> effective = stringValueOpt();
    m_number.store(effective ? effective->toInt() : 0, std::memory_order_relaxed);
    Q_EMIT changed();
}

void EnvVar::update(const char* definedValue)
{
    const QString defined = QString::fromLatin1(definedValue);
    const bool isDefined = definedValue != nullptr && defined != m_name;
    setStringValueOpt(Defines, isDefined ? std::optional(defined) : std::nullopt);

    // A look-up of one variable: to copy the whole environment for each of a hundred variables
    // would slow the start. A null value means unset, which is not the same as empty.
    const QByteArray value = qgetenv(m_name.toUtf8().constData());
    setStringValueOpt(Env, value.isNull() ? std::nullopt : std::optional(QString::fromUtf8(value)));
}

QString EnvVar::toString(int nameWidth) const
{
    QString source = QStringLiteral("unset");
    if (m_values.contains(Env))
        source = QStringLiteral("(set from env)    :");
    else if (m_values.contains(Defines))
        source = QStringLiteral("(set from defines):");
    return m_name.leftJustified(nameWidth, QLatin1Char(' '), false) + QLatin1Char(' ') + source +
           QLatin1Char(' ') + stringValueOpt().value_or(QString());
}

void EnvVar::readOrUnregister(const char* definedValue)
{
    try {
        update(definedValue);
    } catch (...) {
        EnvVarStore::instance().removeEnvVar(this);
        throw;
    }
}

} // namespace zeltools::envvar

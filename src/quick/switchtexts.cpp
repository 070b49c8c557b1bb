#include "quick/switchtexts_p.h"

#include "quick/displaytext_p.h"

#include <limits>

namespace zeltools::quick
{

QString SwitchTexts::typeName(envvar::Type type)
{
    switch (type) {
    case envvar::String:
        return tr("Text");
    case envvar::Integer:
        return tr("Number");
    case envvar::Boolean:
        break;
    }
    return tr("On or off");
}

QString SwitchTexts::description(const envvar::EnvVar& var)
{
    return QCoreApplication::translate("Switches", var.description().toUtf8().constData());
}

QString SwitchTexts::categoryName(envvar::Category category)
{
    static constexpr const char* names[] = {
        QT_TR_NOOP("General"),         QT_TR_NOOP("Test"),
        QT_TR_NOOP("CAN bus"),         QT_TR_NOOP("Payment"),
        QT_TR_NOOP("Watchdog"),        QT_TR_NOOP("Display"),
        QT_TR_NOOP("Cup sensor"),      QT_TR_NOOP("I2C"),
        QT_TR_NOOP("ERS protocol"),    QT_TR_NOOP("Remote server"),
        QT_TR_NOOP("Touchless"),       QT_TR_NOOP("Vesta One"),
        QT_TR_NOOP("Android"),         QT_TR_NOOP("Miscellaneous"),
        QT_TR_NOOP("Power board"),     QT_TR_NOOP("Bluetooth"),
        QT_TR_NOOP("Network"),         QT_TR_NOOP("Date and time"),
        QT_TR_NOOP("Piston"),          nullptr,
        QT_TR_NOOP("Capacitive keys"), QT_TR_NOOP("SocketCAN")};
    const auto isKnown = category >= 0 && size_t(category) < std::size(names);
    const char* const name = isKnown ? names[category] : nullptr;
    return name != nullptr ? tr(name) : QString::number(category);
}

QVariantList SwitchTexts::categories(const QVector<envvar::EnvVar*>& vars)
{
    QMap<int, QString> names{{-1, tr("All")}};
    for (const envvar::EnvVar* const var : vars)
        names.insert(var->category(), categoryName(var->category()));
    QVariantList entries;
    for (auto name = names.begin(); name != names.end(); ++name)
        entries.append(
            QVariantMap{{QStringLiteral("value"), name.key()}, {QStringLiteral("name"), *name}});
    return entries;
}

QString SwitchTexts::refusal(envvar::Type type, const QString& value)
{
    const QString shown = DisplayText(value).text;
    if (type == envvar::Integer)
        return tr("\"%1\" is not a whole number from %2 to %3.")
            .arg(shown, QString::number(std::numeric_limits<int>::min()),
                 QString::number(std::numeric_limits<int>::max()));
    if (type == envvar::Boolean)
        return tr("\"%1\" is neither 1 (on) nor 0 (off).").arg(shown);
    return tr("The switch does not take \"%1\".").arg(shown);
}

} // namespace zeltools::quick

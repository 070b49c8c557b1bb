#include "quick/screensettings.h"

#include "quick/language_p.h"

namespace zeltools::quick
{

ScreenSettings::ScreenSettings(QObject* parent)
    : QObject(parent)
{
    connect(Access::instance(), &Access::levelChanged, this, &ScreenSettings::levelChanged);
    connect(Access::instance(), &Access::userChanged, this, &ScreenSettings::userChanged);
    connect(Language::instance(), &Language::changed, this, &ScreenSettings::languageChanged);
}

ScreenSettings::~ScreenSettings() = default;

QString ScreenSettings::language() const
{
    return Language::instance()->code();
}

void ScreenSettings::setLanguage(const QString& language)
{
    Language::instance()->setCode(language);
}

} // namespace zeltools::quick

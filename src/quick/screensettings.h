#pragma once

#include <zeltools/quick/access.h>

#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QString>
#include <qqml.h>

namespace zeltools::quick
{

/// The settings of a screen that hold for the whole process: the level and the user of Access, and
/// the language. An object of this type has no values of its own, so that a screen can offer them
/// as aliases: a value that a host writes always reaches Access, even if the property has never
/// been set, and every screen reads the value that another one has set.
class ZELTOOLS_EXPORT ScreenSettings : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(ScreenSettings)
    /// See Access::level.
    Q_PROPERTY(zeltools::quick::Access::Level level READ level WRITE setLevel NOTIFY levelChanged)
    /// See Access::user.
    Q_PROPERTY(QString user READ user WRITE setUser NOTIFY userChanged)
    /// See Library::language.
    Q_PROPERTY(QString language READ language WRITE setLanguage NOTIFY languageChanged)

public:
    explicit ScreenSettings(QObject* parent = nullptr);
    ~ScreenSettings() override;

    Access::Level level() const { return Access::instance()->level(); }
    void setLevel(zeltools::quick::Access::Level level) { Access::instance()->setLevel(level); }

    QString user() const { return Access::instance()->user(); }
    void setUser(const QString& user) { Access::instance()->setUser(user); }

    QString language() const;
    void setLanguage(const QString& language);

Q_SIGNALS:
    void levelChanged();
    void userChanged();
    void languageChanged();
};

} // namespace zeltools::quick

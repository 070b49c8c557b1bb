#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QString>
#include <qqml.h>

namespace zeltools::quick
{

/// The access level and the name of the person in front of the screen. The host sets them, for
/// example after a badge was read; by default, nothing may be changed.
///
/// Each type of this module that changes the machine asks refusal() first, and reports each change
/// by recordChange(). Use it in the thread of the QML engine.
class ZELTOOLS_EXPORT Access : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(Access)
    QML_UNCREATABLE("The only object is Library.access.")
    Q_PROPERTY(zeltools::quick::Access::Level level READ level WRITE setLevel NOTIFY levelChanged)
    Q_PROPERTY(QString user READ user WRITE setUser NOTIFY userChanged)

public:
    /// The changes that the person may make. Each level includes those before it.
    enum Level : int {
        ReadOnly,  ///< Nothing may be changed.
        Operator,  ///< Debug lines of log modules, the date, the time, the time zone and services.
        Technician ///< Also the switches of the application and the deletion of files.
    };
    Q_ENUM(Level)

    /// The only object, which is never destroyed.
    static Access* instance();
    ~Access() override;

    /// The level of the person in front of the screen; ReadOnly by default.
    Level level() const { return m_level; }
    /// A value that is not a level counts as ReadOnly.
    void setLevel(Level level);

    /// The name of the person that event lines give; empty if it is not known.
    QString user() const { return m_user; }
    void setUser(const QString& user);

    /// Whether the level is at least the one that is needed.
    Q_INVOKABLE bool allows(zeltools::quick::Access::Level needed) const
    {
        return needed <= m_level && needed >= ReadOnly;
    }
    /// Returns an empty text if the change is allowed, otherwise the reason for the user in the
    /// language of the screen. A program without a Path, which has no log files, may change
    /// nothing: the change could not be recorded.
    QString refusal(Level needed) const;

    /// Writes the event line `Service: TEXT (by USER)`, of the kind ConfigurationEvent. It needs a
    /// Path. The text is English, like everything that goes into files. It is written as
    /// DisplayText shows it, so that it stays one line, and "|", which separates the fields of an
    /// event line, becomes "/".
    void recordChange(const QString& text) const;

Q_SIGNALS:
    void levelChanged();
    void userChanged();

private:
    Access();

    Level m_level = ReadOnly;
    QString m_user;
};

} // namespace zeltools::quick

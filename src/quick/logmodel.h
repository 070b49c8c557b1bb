#pragma once

#include <zeltools/logging/loglevel.h>
#include <zeltools/quick/countedmodel.h>
#include <zeltools/zeltools_export.h>

#include <QVariantList>
#include <qqml.h>

#include <memory>

namespace zeltools::quick
{

class FrameUpdates;
class LogCollector;
class LogFilter;
class LogLines;
class PastLines;

/// The log lines of this process while the model lives, oldest first, as the log manager prints
/// them, and before them the last lines that are in the general log file when the model is created.
/// Lines of all threads are added at most once per frame, however many there are.
///
/// The model keeps the last lines up to `maximumRows` and 16 MiB. The filters choose from what is
/// kept; a change of them resets the model. It belongs to one thread, that of the QML engine, and
/// may be destroyed while other threads log. The path layout must exist before the model is
/// created; without it, there are no lines.
class ZELTOOLS_EXPORT LogModel : public zeltools::quick::CountedModel
{
    Q_OBJECT
    QML_NAMED_ELEMENT(LogModel)
    Q_PROPERTY(int level READ level WRITE setLevel NOTIFY levelChanged)
    Q_PROPERTY(QVariantList levels READ levels NOTIFY languageChanged)
    Q_PROPERTY(QString module READ module WRITE setModule NOTIFY moduleChanged)
    Q_PROPERTY(QString filter READ filter WRITE setFilter NOTIFY filterChanged)
    Q_PROPERTY(bool includesPast READ includesPast WRITE setIncludesPast NOTIFY includesPastChanged)
    Q_PROPERTY(int maximumRows READ maximumRows WRITE setMaximumRows NOTIFY maximumRowsChanged)
    Q_PROPERTY(bool paused READ isPaused WRITE setPaused NOTIFY pausedChanged)
    Q_PROPERTY(int lostLines READ lostLines NOTIFY lostLinesChanged)

public:
    /// The levels of LogLevel::Level.
    enum Level {
        Debug = LogLevel::Debug,
        Info = LogLevel::Info,
        Event = LogLevel::Event,
        Warning = LogLevel::Warning,
        Error = LogLevel::Error,
        Critical = LogLevel::Critical,
        Grinder = LogLevel::Grinder,
        Capsule = LogLevel::Capsule,
        M4 = LogLevel::M4
    };
    Q_ENUM(Level)
    /// The roles `time`, `level`, `levelName`, `modules`, `text`, `isCut`, `fullText` and `thread`
    /// of QML.
    enum Role {
        TimeRole = Qt::UserRole, ///< QDateTime
        LevelRole,               ///< Level as an int.
        LevelNameRole,           ///< The name in the language of the screen.
        ModulesRole,             ///< The names, joined by ", ".
        TextRole,                ///< At most 1,000 characters in one line.
        IsCutRole,               ///< Whether the line has more than `text`.
        FullTextRole,            ///< At most 65,536 characters.
        ThreadRole               ///< The number that the kernel gives to the thread.
    };

    explicit LogModel(QObject* parent = nullptr);
    ~LogModel() override;

    /// The lowest Level that is shown, from Debug to Critical. Grinder, Capsule and M4 lines count
    /// as Info. Another value counts as Debug.
    int level() const;
    void setLevel(int level);
    /// The levels as a list of {value, name}; the names are in the language of the screen.
    QVariantList levels() const;
    /// The name of the module whose lines are shown; empty for all.
    QString module() const;
    void setModule(const QString& name);
    /// A text that shown lines contain, without regard to case; empty for all.
    QString filter() const;
    void setFilter(const QString& text);
    /// Whether the model begins with the last 256 KiB of the general log file, which another thread
    /// reads. It is on by default. Set it before control returns to the event loop, when the
    /// reading begins. These lines have no modules and no thread.
    bool includesPast() const { return m_includesPast; }
    void setIncludesPast(bool on);
    /// How many lines are kept, from 1 to 100,000; 10,000 by default.
    int maximumRows() const;
    void setMaximumRows(int count);
    /// A paused model does not change. The last lines that come meanwhile are added afterwards.
    bool isPaused() const { return m_isPaused; }
    void setPaused(bool on);
    /// The number of lines that were never in the model, because more came between two updates than
    /// it keeps.
    int lostLines() const { return m_lostLines; }

    /// Forgets the lines so far. The log files stay as they are.
    Q_INVOKABLE void clear();

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void levelChanged();
    void moduleChanged();
    void filterChanged();
    void includesPastChanged();
    void maximumRowsChanged();
    void pausedChanged();
    void lostLinesChanged();

private:
    template <typename Change>
    void changeFilter(const Change& change);
    void update();
    void addFresh();
    void addPast();
    void removeFirst(size_t count);
    void addLost(quint64 count);

    const std::unique_ptr<LogLines> m_lines;
    const std::unique_ptr<FrameUpdates> m_updates;
    const std::unique_ptr<LogCollector> m_collector; // writes to the updates
    std::shared_ptr<PastLines> m_past;               // until its lines are added
    bool m_includesPast = true;
    bool m_isPastRequested = false;
    bool m_isPaused = false;
    int m_lostLines = 0;
};

} // namespace zeltools::quick

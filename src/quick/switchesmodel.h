#pragma once

#include <zeltools/envvar/envvar.h>
#include <zeltools/quick/countedmodel.h>
#include <zeltools/zeltools_export.h>

#include <QVariantList>
#include <QVector>
#include <qqml.h>

#include <memory>

namespace zeltools::quick
{

class SwitchEditor;

/// The switches of EnvVarStore by category, and within one in the order of registration. The model
/// follows every change of a value, of the visibility and of the list of switches.
///
/// A technician (see Access) may change a value, which takes effect immediately and is one event
/// line. With an environment file, the change is also written there; without one, it lasts until
/// the process ends. Below that level, a value whose name looks like that of a secret is "***"
/// (withoutSecret()), as it is in the event line.
///
/// A model belongs to the main thread.
class ZELTOOLS_EXPORT SwitchesModel : public zeltools::quick::CountedModel
{
    Q_OBJECT
    QML_NAMED_ELEMENT(SwitchesModel)
    Q_PROPERTY(int category READ category WRITE setCategory NOTIFY categoryChanged)
    Q_PROPERTY(QString filter READ filter WRITE setFilter NOTIFY filterChanged)
    Q_PROPERTY(bool onlyChanged READ onlyChanged WRITE setOnlyChanged NOTIFY onlyChangedChanged)
    Q_PROPERTY(bool showHidden READ showHidden WRITE setShowHidden NOTIFY showHiddenChanged)
    Q_PROPERTY(QString environmentFile READ environmentFile WRITE setEnvironmentFile NOTIFY
                   environmentFileChanged)
    Q_PROPERTY(QString fileProblem READ fileProblem NOTIFY fileProblemChanged)
    Q_PROPERTY(QVariantList categories READ categories NOTIFY categoriesChanged)

public:
    /// The types of envvar::Type.
    enum Type { Boolean = envvar::Boolean, String = envvar::String, Integer = envvar::Integer };
    Q_ENUM(Type)
    /// The roles, whose names in QML are given beside them.
    enum Role {
        NameRole = Qt::UserRole, ///< `name`
        ValueRole,               ///< `value`, shortened for a row; empty if there is none
        FullValueRole,           ///< `fullValue`, the exact text, for editing by a technician
        IsCutRole,               ///< `isCut`, whether `value` is shortened
        DefaultValueRole,        ///< `defaultValue`, the value from the build; empty if none
        SourceRole,              ///< `source`, of the value: "environment", "build" or "unset"
        TypeRole,                ///< `type`, a Type
        TypeNameRole,            ///< `typeName`, in the language of the screen
        DescriptionRole,         ///< `description`, translated in the context "Switches"
        CategoryRole,            ///< `category`, a number of zeltools::envvar::Category
        CategoryNameRole,        ///< `categoryName`, in the language of the screen
        IsEditableRole,          ///< `isEditable`, whether the access level allows a change
        IsVisibleRole,           ///< `isVisible`, whether the switch has the flag Visible
        IsOnRole                 ///< `isOn`, of a Boolean
    };

    explicit SwitchesModel(QObject* parent = nullptr);
    ~SwitchesModel() override;

    /// The category of the rows; -1, the default, for all.
    int category() const { return m_category; }
    void setCategory(int category);
    /// A text that the name or the description contains, without regard to case.
    QString filter() const { return m_filter; }
    void setFilter(const QString& filter);
    /// Whether the rows are only those with a value from the environment.
    bool onlyChanged() const { return m_onlyChanged; }
    void setOnlyChanged(bool on);
    /// Whether the rows include switches without the flag Visible. It is off by default.
    bool showHidden() const { return m_showHidden; }
    void setShowHidden(bool on);
    /// The path of the file to which changes are written.
    QString environmentFile() const;
    void setEnvironmentFile(const QString& path);
    /// Why the last change is not in the file; empty if it is.
    QString fileProblem() const;
    /// The categories of all switches as objects with `value` and `name`; the first is -1 for all.
    QVariantList categories() const;

    // These three return an empty text, or the reason for the user why they did nothing. If only
    // the file could not be written, the change lasts until the process ends, and the reason,
    // which is also fileProblem(), says so. With a file, they block until it is on the storage, and
    // wait up to ten seconds for an edit by `zelctl env`.

    /// Sets the value in the environment of the switch. In the file, only the lines of this switch
    /// and of those that it excludes change.
    Q_INVOKABLE QString setValue(int row, const QString& text);
    /// Removes that value, so that the one from the build applies.
    Q_INVOKABLE QString reset(int row);
    /// Writes all values from the environment to the file, and keeps its other lines
    /// (EnvVarStore::saveInto()). The line of a switch without such a value is removed, even if
    /// another program has written it.
    Q_INVOKABLE QString save();

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void categoryChanged();
    void filterChanged();
    void onlyChangedChanged();
    void showHiddenChanged();
    /// Emitted when the path of the environment file changes.
    void environmentFileChanged();
    void fileProblemChanged();
    void categoriesChanged();

private:
    template <typename Value, typename Signal>
    void set(Value& member, const Value& value, Signal signal);
    bool isShown(const envvar::EnvVar& var) const;
    void follow();
    void forget(QObject* var);
    void updateRows();
    void onChanged(envvar::EnvVar* var);
    envvar::EnvVar* at(int row) const; // null if there is no such row
    QString tell(const QString& result);

    QVector<envvar::EnvVar*> m_followed; // all of the store, in its order
    QVector<envvar::EnvVar*> m_rows;
    int m_category = -1;
    QString m_filter;
    bool m_onlyChanged = false;
    bool m_showHidden = false;
    const std::unique_ptr<SwitchEditor> m_editor;
};

} // namespace zeltools::quick

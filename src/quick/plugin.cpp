#include <zeltools/quick/library.h>

#include <QQmlEngineExtensionPlugin>

void qml_register_types_ZelTools();

namespace zeltools::quick
{

/// The plugin that `import ZelTools 1.0` loads. Qt calls the function below through it.
class Plugin : public QQmlEngineExtensionPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QQmlEngineExtensionInterface_iid)

public:
    explicit Plugin(QObject* parent = nullptr)
        : QQmlEngineExtensionPlugin(parent)
    {
        // The reference keeps the registrations of a static library from being left out.
        volatile auto registration = &qml_register_types_ZelTools;
        Q_UNUSED(registration)
    }

    /// Loads the language of the system before the first text is shown.
    void initializeEngine(QQmlEngine*, const char*) override { Library().language(); }
};

} // namespace zeltools::quick

#include "plugin.moc"

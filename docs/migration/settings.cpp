// Settings of a grinder by QSettings and by switches, and the way from one to the other.

#include <zeltools/envvar/envvarbool.h>
#include <zeltools/envvar/envvarint.h>
#include <zeltools/envvar/envvarstore.h>

#include <QCoreApplication>
#include <QFile>
#include <QSettings>
#include <QTextStream>

#include <stdexcept>

using namespace zeltools::envvar;

//! [switches]
EnvVarInt dose_g("GRINDER_DOSE_G", "Ground coffee for a cup, in grams", General, Visible, "7");
EnvVarBool isFine("GRINDER_FINE", "Grind finely", General, Visible, "0");
//! [switches]

namespace
{

int writeSettings(const QString& path)
{
    //! [there]
    QSettings settings(path, QSettings::IniFormat);
    settings.setValue(QStringLiteral("grinder/dose"), 9);
    settings.setValue(QStringLiteral("grinder/fine"), true);
    settings.sync();
    const int dose = settings.value(QStringLiteral("grinder/dose"), 7).toInt();
    //! [there]
    return dose;
}

bool saveSwitches(const QString& path)
{
    //! [here]
    dose_g.set(9);
    isFine.set(true);
    const SaveResult result = EnvVarStore::instance().saveInto(path);
    const int dose = dose_g(); // 7 if nothing was ever set
    //! [here]
    return result.success && dose == 9;
}

//! [import]
// Takes the settings of an earlier version once, and leaves them aside.
bool importSettings(const QString& iniFile, const QString& environmentFile)
{
    if (!QFile::exists(iniFile))
        return true;
    const QSettings settings(iniFile, QSettings::IniFormat);
    const auto setSwitch = [&](EnvVar& variable, const QString& key) {
        const QString text = settings.value(key).toString();
        const bool isOn = text == QLatin1String("true");
        const bool isBool = isOn || text == QLatin1String("false");
        if (settings.contains(key))
            variable.setStringValueOpt(EnvVar::Env, isBool ? QString::number(int(isOn)) : text);
    };
    try {
        setSwitch(dose_g, QStringLiteral("grinder/dose"));
        setSwitch(isFine, QStringLiteral("grinder/fine"));
    } catch (const std::invalid_argument&) { // such as a dose that is not a number
        return false;
    }
    return EnvVarStore::instance().saveInto(environmentFile).success &&
           QFile::rename(iniFile, iniFile + QStringLiteral(".imported"));
}
//! [import]

QByteArray content(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QString ini = QStringLiteral("grinder.ini");
    const bool areSame = writeSettings(ini) == 9 && saveSwitches(QStringLiteral("own"));
    dose_g.set(0);
    isFine.set(false);
    const bool isImported = importSettings(ini, QStringLiteral("imported"));
    QTextStream(stdout) << content(QStringLiteral("imported"));
    return areSame && isImported &&
                   content(QStringLiteral("own")) == content(QStringLiteral("imported"))
               ? 0
               : 1;
}

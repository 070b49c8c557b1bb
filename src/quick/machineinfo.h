#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QString>
#include <qqml.h>

namespace zeltools::quick
{

/// The facts about the machine and its software that an overview shows. Those that change are read
/// again at each full minute and by refresh(). A fact that the system does not provide is an empty
/// text or 0. Use it in the thread of the QML engine.
class ZELTOOLS_EXPORT MachineInfo : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(MachineInfo)
    /// The version of the library that the process has loaded.
    Q_PROPERTY(QString libraryVersion READ libraryVersion CONSTANT)
    /// The version of Qt that the process has loaded.
    Q_PROPERTY(QString qtVersion READ qtVersion CONSTANT)
    /// The release of the kernel.
    Q_PROPERTY(QString kernelVersion READ kernelVersion CONSTANT)
    /// The name of the machine in its network.
    Q_PROPERTY(QString hostName READ hostName CONSTANT)
    /// The model whose switch MODEL_... is on, from the build or the environment, such as "VIVO".
    Q_PROPERTY(QString model READ model CONSTANT)
    /// "board" or "desktop".
    Q_PROPERTY(QString build READ build CONSTANT)
    /// The name that the application has set in QCoreApplication.
    Q_PROPERTY(QString applicationName READ applicationName CONSTANT)
    /// The version that the application has set in QCoreApplication.
    Q_PROPERTY(QString applicationVersion READ applicationVersion CONSTANT)
    Q_PROPERTY(double uptimeSeconds READ uptimeSeconds NOTIFY refreshed)
    // All sizes are bytes. Numbers of QML are of this type.
    /// The memory of the machine, in bytes as a number of QML.
    Q_PROPERTY(double memoryTotal READ memoryTotal NOTIFY refreshed)
    /// The memory that applications can still get, in bytes.
    Q_PROPERTY(double memoryAvailable READ memoryAvailable NOTIFY refreshed)
    /// The disk of the log files, or the root disk without a path layout.
    Q_PROPERTY(double diskTotal READ diskTotal NOTIFY refreshed)
    /// The space of that disk which is free for the application, in bytes.
    Q_PROPERTY(double diskAvailable READ diskAvailable NOTIFY refreshed)

public:
    explicit MachineInfo(QObject* parent = nullptr);
    ~MachineInfo() override;

    QString libraryVersion() const;
    QString qtVersion() const;
    QString kernelVersion() const;
    QString hostName() const;
    QString model() const;
    QString build() const;
    QString applicationName() const;
    QString applicationVersion() const;
    /// The time since the machine was started, including the time in which it was suspended.
    qint64 uptimeSeconds() const { return m_uptime_s; }
    qint64 memoryTotal() const { return m_memoryTotal_B; }
    qint64 memoryAvailable() const { return m_memoryAvailable_B; }
    qint64 diskTotal() const { return m_diskTotal_B; }
    qint64 diskAvailable() const { return m_diskAvailable_B; }

    /// Reads all values again; those that cannot change stay.
    Q_INVOKABLE void refresh();

Q_SIGNALS:
    void refreshed();

private:
    qint64 m_uptime_s = 0;
    qint64 m_memoryTotal_B = 0;
    qint64 m_memoryAvailable_B = 0;
    qint64 m_diskTotal_B = 0;
    qint64 m_diskAvailable_B = 0;
};

} // namespace zeltools::quick

#pragma once

#include "logging/logdelivery.h"
#include "logging/logfileset_p.h"

class SinkList;

/// Chooses and begins the delivery of the log manager: recovers what ended processes have left,
/// opens the files, and creates the ring of buffered delivery. Only one thread uses it.
class DeliveryControl
{
public:
    DeliveryControl(LogFileSet& files, SinkList& sinks);

    /// Takes the settings, and begins them if the files are open. LogManager::setDelivery()
    /// describes the result.
    bool set(const LogDelivery& delivery);
    const LogDelivery& settings() const { return m_delivery; }
    /// Opens the files and begins the delivery.
    void openFiles(const LogFileSet::Settings& settings);
    /// Ends buffered delivery within two seconds and closes the files.
    void closeFiles();

private:
    bool begin();
    QStringList ringFolders() const;
    bool isBufferedWanted() const;

    LogFileSet& m_files;
    SinkList& m_sinks;
    LogDelivery m_delivery;
    QString m_debugFolder;
};

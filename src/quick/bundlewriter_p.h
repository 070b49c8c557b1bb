#pragma once

#include <QObject>
#include <QString>

#include <memory>

namespace zeltools::quick
{

/// Writes a support bundle of this machine, in a library that was built with them.
class BundleWriter : public QObject
{
    Q_OBJECT

public:
    /// Returns null in a library without support bundles.
    static std::unique_ptr<BundleWriter> create();
    /// Cancels a running bundle, and does not wait for its end.
    ~BundleWriter() override;

    virtual void start(const QString& path) = 0;
    virtual void cancel() = 0;
    /// Why the last bundle has failed; empty if it is complete.
    virtual QString errorString() const = 0;

Q_SIGNALS:
    /// A fraction of 1.
    void progress(double fraction);
    void finished(bool isDone);
};

} // namespace zeltools::quick

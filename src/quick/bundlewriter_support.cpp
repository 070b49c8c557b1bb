#include "quick/bundlewriter_p.h"
#include "supportbundle/supportbundle.h"

#include <QCoreApplication>

namespace zeltools::quick
{

namespace
{

class SupportBundleWriter final : public BundleWriter
{
public:
    ~SupportBundleWriter() override
    {
        if (!m_bundle || !m_bundle->isRunning() || QCoreApplication::instance() == nullptr)
            return;
        // The thread may wait for a slow stick, and the screen must not. The application waits at
        // its end.
        SupportBundle* const bundle = m_bundle.release();
        bundle->disconnect(this);
        bundle->cancel();
        bundle->setParent(QCoreApplication::instance());
        connect(bundle, &SupportBundle::finished, bundle, &QObject::deleteLater);
    }

    void start(const QString& path) override
    {
        // A new object for each bundle, which takes the losses as they are now.
        m_bundle = std::make_unique<SupportBundle>();
        connect(m_bundle.get(), &SupportBundle::progress, this,
                [this](qint64 done_B, qint64 total_B) {
                    Q_EMIT progress(static_cast<double>(done_B) /
                                    static_cast<double>(qMax(total_B, qint64(1))));
                });
        connect(m_bundle.get(), &SupportBundle::finished, this, &BundleWriter::finished);
        m_bundle->addThisMachine();
        m_bundle->start(path);
    }
    void cancel() override
    {
        if (m_bundle)
            m_bundle->cancel();
    }
    QString errorString() const override { return m_bundle ? m_bundle->errorString() : QString(); }

private:
    std::unique_ptr<SupportBundle> m_bundle;
};

} // namespace

std::unique_ptr<BundleWriter> BundleWriter::create()
{
    return std::make_unique<SupportBundleWriter>();
}

} // namespace zeltools::quick

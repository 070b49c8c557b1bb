#pragma once

#include <QString>

namespace zeltools::system::service
{

/// The file that stores whether the fallback of Ntp is on, in the form that Ntp describes.
class NtpState
{
public:
    explicit NtpState(const QString& file);

    bool isOn() const;
    /// Replaces the file if the value changes. Without the folder it does nothing and logs nothing;
    /// a failed write is a Warning.
    void save(bool isOn) const;

private:
    QByteArray load() const;
    QString writeInPlace(const QByteArray& state) const;

    QString m_file;
};

} // namespace zeltools::system::service

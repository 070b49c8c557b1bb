#pragma once

#include <QByteArray>
#include <QObject>
#include <QVariant>

#include <functional>

/// The boards of the machine in one simulated object. Requests are answered by signals, most of
/// them in the event loop, and not always well.
class Board : public QObject
{
    Q_OBJECT

public:
    /// How the next requests are answered, a letter each: "g" well, "w" wrongly, "l" when the
    /// caller has long given up, "-" not at all. Requests without a letter are answered well.
    explicit Board(const QByteArray& answers);

    void grind();   ///< ground(); a wrong dose is too small
    void brew();    ///< brewed()
    void fill();    ///< tankFull()
    void drain();   ///< tankEmpty(), before it returns
    void command(); ///< answered()

    double dose_g() const { return m_dose_g; }

Q_SIGNALS:
    void ground();
    void brewed();
    void tankFull();
    void tankEmpty();
    void answered(const QVariant& isAccepted);

private:
    void answer(const std::function<void(bool isWell)>& emitAnswer);

    QByteArray m_answers;
    double m_dose_g = 0;
};

#pragma once

#include <QObject>

//! [class]
/// The part of the machine that grinds coffee.
class Grinder : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    ~Grinder() override;

    /// Begins to grind. One of the last two signals follows.
    virtual void grind(int dose_g) = 0;

Q_SIGNALS:
    void ready(); ///< The grinder can work now.
    void ground();
    void jammed();
};
//! [class]

#pragma once

#include "envvar/envvar.h"

#include <QCoreApplication>
#include <QVariantList>
#include <QVector>

namespace zeltools::quick
{

/// The texts about switches in the language of the screen.
struct SwitchTexts
{
    Q_DECLARE_TR_FUNCTIONS(zeltools::quick::SwitchTexts)

public:
    SwitchTexts() = delete;

    static QString typeName(envvar::Type type);
    /// The description, if the library or the host has a translation of it in the context
    /// "Switches"; otherwise as it is.
    static QString description(const envvar::EnvVar& var);
    static QString categoryName(envvar::Category category);
    /// The categories of the switches as objects with `value` and `name`; the first is -1 for all.
    static QVariantList categories(const QVector<envvar::EnvVar*>& vars);
    /// Why a switch of this type refuses the value.
    static QString refusal(envvar::Type type, const QString& value);
};

} // namespace zeltools::quick

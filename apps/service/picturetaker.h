#pragma once

#include "screen.h"

#include <QImage>
#include <QString>

/// Takes a picture of each page of the screen in each size, palette and in two languages, named
/// like "events-800x480-dark-en.png".
class PictureTaker
{
public:
    PictureTaker(Screen& screen, const QString& folder)
        : m_screen(screen)
        , m_folder(folder)
    {
    }

    /// Returns whether all pictures are written; reports a failure on standard error.
    bool takeAll();

private:
    bool takePages(const QString& suffix);
    bool isLoading() const;
    QImage settledImage();

    Screen& m_screen;
    const QString m_folder;
};

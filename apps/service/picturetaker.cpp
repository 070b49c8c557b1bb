#include "picturetaker.h"

#include "fixedclock.h"
#include "samplelines.h"

#include <zeltools/folderlistmodel.h>
#include <zeltools/quick/eventhistorymodel.h>

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTextStream>
#include <QThread>

#include <algorithm>
#include <cstring>

using tools::datamodel::FolderListModel;
using zeltools::quick::EventHistoryModel;

namespace
{

const char* const s_pages[]{"overview", "events", "log",   "switches", "machine",
                            "threads",  "kernel", "files", "time",     "support"};

// The files have the time of their lines, not that of the disk.
void setFileTimes()
{
    QDirIterator files(QStringLiteral("."), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (file.open(QIODevice::ReadWrite))
            file.setFileTime(QDateTime::currentDateTime(), QFileDevice::FileModificationTime);
    }
}

} // namespace

bool PictureTaker::takeAll()
{
    if (!QDir().mkpath(m_folder)) {
        QTextStream(stderr) << "The folder " << m_folder << " cannot be created.\n";
        return false;
    }
    m_screen.window()->show();
    bool areWritten = true;
    for (const QString& language : {QStringLiteral("en"), QStringLiteral("ar")}) {
        m_screen.set("language", language);
        for (const bool isDark : {true, false}) {
            m_screen.set("dark", isDark);
            for (const QSize size : {QSize(800, 480), QSize(1280, 800)}) {
                m_screen.resize(size);
                areWritten =
                    takePages(QStringLiteral("-%1x%2-%3-%4.png")
                                  .arg(size.width())
                                  .arg(size.height())
                                  .arg(QLatin1String(isDark ? "dark" : "light"), language)) &&
                    areWritten;
            }
        }
    }
    return areWritten;
}

bool PictureTaker::takePages(const QString& suffix)
{
    bool areWritten = true;
    for (const char* const page : s_pages) {
        setFileTimes();
        m_screen.set("page", QLatin1String(page));
        if (std::strcmp(page, "log") == 0)
            writeSampleLog(); // The page shows the lines from now on.
        const QString path = m_folder + QLatin1Char('/') + QLatin1String(page) + suffix;
        constexpr int smallest = 0; // quality of a PNG file, which is the same for the eye
        if (!settledImage().save(path, "PNG", smallest)) {
            QTextStream(stderr) << "The picture " << path << " cannot be written.\n";
            areWritten = false;
        }
    }
    return areWritten;
}

bool PictureTaker::isLoading() const
{
    const auto* const page = m_screen.service()->property("currentPage").value<QObject*>();
    if (page == nullptr)
        return false;
    const auto histories = page->findChildren<EventHistoryModel*>();
    const auto folders = page->findChildren<FolderListModel*>();
    return std::any_of(histories.begin(), histories.end(),
                       [](auto* model) { return model->status() == EventHistoryModel::Loading; }) ||
           std::any_of(folders.begin(), folders.end(),
                       [](auto* model) { return model->status() == FolderListModel::Listing; });
}

// The page has the same half second of the machine each time, however long its models read.
QImage PictureTaker::settledImage()
{
    constexpr int steps = 50;
    constexpr int step_ms = 10;
    constexpr int framesAlike = 3;
    QImage image;
    for (int step = 0, alike = 0; alike < framesAlike;) {
        QThread::msleep(step_ms);
        QCoreApplication::processEvents();
        if (isLoading())
            continue;
        if (++step <= steps) {
            fixedclock::advance(step_ms);
            continue;
        }
        const QImage next = m_screen.image();
        alike = next == image ? alike + 1 : 0;
        image = next;
    }
    return image;
}

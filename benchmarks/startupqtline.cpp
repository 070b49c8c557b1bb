// A process of bench_startup: a host of Qt that logs one line. With an argument it opens as many
// files as the log manager, in the folder that the argument names, and looks for as many folders.

#include <QDebug>
#include <QDir>
#include <QFile>

#include <array>

int main(int argc, char** argv)
{
    constexpr int foldersCount = 18;
    std::array<QFile, 5> files;
    if (argc > 1) {
        const QString folder = QString::fromUtf8(argv[1]);
        for (int i = 0; i < foldersCount; ++i)
            QDir().mkpath(folder + QLatin1Char('/') + QString::number(i));
        for (QFile& file : files) {
            const auto index = &file - files.data();
            file.setFileName(folder + QLatin1String("/file") + QString::number(index));
            if (!file.open(QIODevice::Append))
                return 1;
        }
    }
    qInfo() << "One line";
}

#include <zeltools/supportbundle/supportbundle.h>
#include <zeltools/supportbundle/supportbundlereader.h>

#include <QCoreApplication>

// Makes a bundle of one text at the given path and reads it back.
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QString path = QString::fromLocal8Bit(argv[1]);
    zeltools::SupportBundle bundle;
    bundle.addContent(QStringLiteral("note.txt"), "Espresso");
    zeltools::SupportBundleReader reader(path);
    const bool isRight = bundle.create(path) && reader.verify() &&
                         reader.manifest().members.first().name == "note.txt";
    return isRight ? 0 : 1;
}

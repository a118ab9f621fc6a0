// Gives each file of the folders on the command line to the fuzz target, without the fuzzer: what was found
// once is looked at in every run of the tests, with every compiler.

#include <QByteArray>
#include <QDir>
#include <QFile>

#include <cstdint>
#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t * data, size_t size);

int main(int argc, char ** argv)
{
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        const QDir folder(QString::fromLocal8Bit(argv[i]));
        for (const QString & name : folder.entryList(QDir::Files)) {
            QFile file(folder.filePath(name));
            if (!file.open(QIODevice::ReadOnly)) {
                std::fprintf(stderr, "%s cannot be read\n", qPrintable(file.fileName()));
                return 1;
            }
            const QByteArray bytes = file.readAll();
            std::fprintf(stderr, "%s\n", qPrintable(name));
            LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(bytes.constData()),
                                   static_cast<size_t>(bytes.size()));
            ++count;
        }
    }
    std::fprintf(stderr, "%d inputs\n", count);
    return count > 0 ? 0 : 1;
}

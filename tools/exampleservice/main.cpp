#include "exampleservice.h"

#include <QStringList>

namespace {

// "name=NAME" among the arguments after "--", so that it reaches an installed service as well.
QString nameIn(int argc, char **argv)
{
    const QLatin1String option("name=");
    for (int i = 1; i < argc; ++i) {
        const QString word = QString::fromUtf8(argv[i]);
        if (word.startsWith(option))
            return word.mid(option.size());
    }
    return QStringLiteral("kx300-example");
}

} // namespace

int main(int argc, char **argv)
{
    ExampleService service(argc, argv, nameIn(argc, argv));
    return service.exec();
}

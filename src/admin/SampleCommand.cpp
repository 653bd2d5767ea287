#include "admin/Command.h"
#include "admin/NewDatabase.h"
#include "admin/SampleCrib.h"
#include "db/Schema.h"

#include <algorithm>

namespace {

QStringList scaleNames()
{
    QStringList names;
    for (const SampleCrib::Scale &scale : SampleCrib::scales())
        names << scale.name;
    return names;
}

int sample(const QCommandLineParser &arguments, QTextStream &out)
{
    const QString name = arguments.value("scale");
    const auto scale = std::ranges::find(SampleCrib::scales(), name, &SampleCrib::Scale::name);
    if (scale == SampleCrib::scales().end())
        throw UsageError("There is no scale '" + name + "'.");

    NewDatabase database(arguments.positionalArguments().constFirst());
    Schema::fill(*database);
    SampleCrib::fill(*database, *scale);
    database.commit();
    out << scale->types << " types, " << scale->locations << " locations, " << scale->tools << " tools, "
        << scale->loans << " loans, " << scale->scrapped << " scrapped\n";
    return 0;
}

}

Command sampleCommand()
{
    const QCommandLineOption scale("scale", "How much there is in it; shop when not given", scaleNames().join('|'),
                                   "shop");
    return {.name = "sample",
            .operands = {"FILE"},
            .options = {scale},
            .summary = "Makes a database with a believable crib",
            .details =
                "The same scale always gives the same content. FILE is new, or a connection file that names an empty\n"
                "database on a server.",
            .run = sample};
}

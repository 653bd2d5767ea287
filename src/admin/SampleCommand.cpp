#include "admin/Command.h"
#include "admin/NewFile.h"
#include "admin/SampleCrib.h"
#include "db/Schema.h"
#include "platform/engine/Workspace.h"

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

    NewFile file(arguments.positionalArguments().constFirst());
    {
        const auto database = Workspace::first().createDatabase(file.temporaryPath());
        Schema::create(*database);
        Transaction transaction(*database);
        SampleCrib::fill(*database, *scale);
        transaction.commit();
    }
    file.commit();
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
            .details = "The same scale always gives the same content.",
            .run = sample};
}

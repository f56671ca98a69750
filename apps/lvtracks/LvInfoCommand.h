#pragma once

#include "LvCommand.h"

/// "lvtracks info": lists the tracks of files as text or JSON.
class LvInfoCommand : public LvCommand
{
protected:
    [[nodiscard]] QString name() const override;
    void addOptions(QCommandLineParser& parser) override;
    LvExitCode run(const QCommandLineParser& parser, const QStringList& fileNames) override;
};

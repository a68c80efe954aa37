#pragma once

#include <QString>
#include <QTemporaryDir>

#include <memory>

// The folders a pendant works in, made for the simulated platform: the
// pendant's current directory (<root>/pendant, whose ../Application/fieldbus is
// the library's working folder) beside a controller folder. Without a
// controller folder of its own the screen works on a copy of the bundled
// sample, so the sample itself never changes.
class Workspace
{
public:
    Workspace() = default;
    ~Workspace();

    // Empty `controller`: a copy of the sample. False with errorString() set.
    bool prepare(const QString &controller);
    QString controllerDir() const { return m_controllerDir; }
    QString errorString() const { return m_error; }

    // The bundled sample controller, installed beside the program or in the source tree.
    static QString sampleDir();

private:
    bool fail(const QString &error);
    bool prepareAppParameters(const QString &pendantDir);

    std::unique_ptr<QTemporaryDir> m_temporary;
    QString m_controllerDir;
    QString m_previousDir;
    QString m_error;
};

#pragma once

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <unistd.h>

namespace VantryTest {

// Runs one case of this test executable again under an unprivileged identity, for
// failures that root's rights would hide (CI runs as root). Returns the child's output
// when the case failed there, an empty text when it passed.
inline QString failureAsUnprivilegedUser(const char *function, const char *dataTag)
{
    constexpr uid_t nobody = 65534;
    QTemporaryDir home;
    if (!home.isValid() || ::chown(home.path().toLocal8Bit().constData(), nobody, nobody) != 0)
        return QStringLiteral("no home folder for the unprivileged run");
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *variable :
        {"HOME", "TMPDIR", "XDG_RUNTIME_DIR", "XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
        environment.insert(QLatin1String(variable), home.path());
    QProcess child;
    child.setProcessEnvironment(environment);
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.start(QStringLiteral("setpriv"),
        {QStringLiteral("--reuid=%1").arg(nobody), QStringLiteral("--regid=%1").arg(nobody),
            QStringLiteral("--clear-groups"), QStringLiteral("--"),
            QCoreApplication::applicationFilePath(),
            QStringLiteral("%1:%2").arg(QLatin1String(function), QLatin1String(dataTag))});
    if (!child.waitForFinished(240000)) {
        child.kill();
        child.waitForFinished();
        return QStringLiteral("the unprivileged run did not finish: ")
            + QString::fromLocal8Bit(child.readAll());
    }
    const QString output = QString::fromLocal8Bit(child.readAll());
    const QRegularExpression passed(QStringLiteral("^PASS   : \\w+::%1\\(%2\\)$")
                                        .arg(QRegularExpression::escape(QLatin1String(function)),
                                            QRegularExpression::escape(QLatin1String(dataTag))),
        QRegularExpression::MultilineOption);
    if (child.exitStatus() != QProcess::NormalExit || child.exitCode() != 0
        || !output.contains(passed))
        return output.isEmpty() ? child.errorString() : output;
    return {};
}

} // namespace VantryTest

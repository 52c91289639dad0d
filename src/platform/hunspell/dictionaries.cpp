#include "platform/hunspell/dictionaries.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QSaveFile>
#include <QStandardPaths>
#include <QStringDecoder>
#include <QStringEncoder>

#include <hunspell/hunspell.hxx>

namespace Vantry::Platform {

// A dictionary in memory with the converters for its own encoding.
struct Dictionaries::Loaded
{
    std::unique_ptr<Hunspell> hunspell;
    QStringEncoder encoder;
    QStringDecoder decoder;
    // Hunspell's answers since the last forgetVerdicts: a text repeats most of its words.
    QHash<QString, bool> verdicts;

    std::string encode(const QString &word)
    {
        const QByteArray bytes = encoder.encode(word);
        return bytes.toStdString();
    }
};

Dictionaries::Dictionaries(QStringList folders, QString personalWordList)
    : m_folders(std::move(folders))
    , m_personalFile(std::move(personalWordList))
{
    for (const QString &folder : std::as_const(m_folders)) {
        const QFileInfoList files
            = QDir(folder).entryInfoList({QStringLiteral("*.dic")}, QDir::Files | QDir::Readable);
        for (const QFileInfo &dic : files) {
            const QString name = dic.completeBaseName();
            if (!m_installed.contains(name)
                && QFileInfo::exists(dic.absolutePath() + u'/' + name + QLatin1String(".aff")))
                m_installed.append(name);
        }
    }
    m_installed.sort();

    QFile personal(m_personalFile);
    if (personal.open(QIODevice::ReadOnly | QIODevice::Text)) {
        for (const QString &line : QString::fromUtf8(personal.readAll()).split(u'\n')) {
            const QString word = line.trimmed();
            if (!word.isEmpty() && !m_personal.contains(word))
                m_personal.append(word);
        }
    }
}

Dictionaries::~Dictionaries() = default;

QStringList Dictionaries::defaultFolders()
{
    return {QStringLiteral("/usr/share/hunspell")};
}

QString Dictionaries::defaultPersonalWordList()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
        + QLatin1String("/VantryHTMLEditor/personal-words.txt");
}

QString Dictionaries::systemDictionary() const
{
    for (const QString &name : {QLocale::system().name(), QStringLiteral("en_US")}) {
        if (m_installed.contains(name))
            return name;
    }
    return m_installed.value(0);
}

QString Dictionaries::dictionaryFile(const QString &name) const
{
    for (const QString &folder : m_folders) {
        const QString path = folder + u'/' + name + QLatin1String(".dic");
        if (QFileInfo::exists(path))
            return path;
    }
    return {};
}

Dictionaries::Loaded *Dictionaries::load(const QString &dictionary)
{
    if (const auto found = m_loaded.constFind(dictionary); found != m_loaded.cend())
        return found->get();
    std::shared_ptr<Loaded> loaded;
    const QString dic = m_installed.contains(dictionary) ? dictionaryFile(dictionary) : QString();
    if (dic.isEmpty()) {
        m_lastError = QStringLiteral("No dictionary \"%1\" is installed").arg(dictionary);
    } else {
        const QString aff = dic.chopped(4) + QLatin1String(".aff");
        auto hunspell = std::make_unique<Hunspell>(
            QFile::encodeName(aff).constData(), QFile::encodeName(dic).constData());
        const QByteArray encoding = QByteArray::fromStdString(hunspell->get_dict_encoding());
        QStringEncoder encoder(encoding.constData());
        QStringDecoder decoder(encoding.constData());
        if (!encoder.isValid() || !decoder.isValid()) {
            m_lastError = QStringLiteral("The dictionary \"%1\" uses the encoding %2, which "
                                         "this system cannot convert")
                              .arg(dictionary, QString::fromLatin1(encoding));
        } else {
            loaded = std::make_shared<Loaded>(
                Loaded{std::move(hunspell), std::move(encoder), std::move(decoder), {}});
            for (const QString &word : std::as_const(m_personal))
                loaded->hunspell->add(loaded->encode(word));
        }
    }
    m_loaded.insert(dictionary, loaded);
    return loaded.get();
}

bool Dictionaries::isCorrect(const QString &dictionary, const QString &word)
{
    if (m_ignored.contains(word))
        return true;
    Loaded *loaded = load(dictionary);
    if (!loaded)
        return true;
    const auto known = loaded->verdicts.constFind(word);
    if (known != loaded->verdicts.cend())
        return *known;
    const bool correct = loaded->hunspell->spell(loaded->encode(word));
    // Answers outlive a read (the next check, the underlines after a scroll, find next
    // ask about the same words), but not without bound.
    if (loaded->verdicts.size() >= 200000)
        loaded->verdicts.clear();
    loaded->verdicts.insert(word, correct);
    return correct;
}

void Dictionaries::forgetVerdicts()
{
    for (const auto &loaded : std::as_const(m_loaded)) {
        if (loaded)
            loaded->verdicts.clear();
    }
}

QStringList Dictionaries::suggestions(const QString &dictionary, const QString &word)
{
    Loaded *loaded = load(dictionary);
    if (!loaded)
        return {};
    QStringList result;
    for (const std::string &suggestion : loaded->hunspell->suggest(loaded->encode(word)))
        result.append(loaded->decoder.decode(QByteArrayView(suggestion)));
    return result;
}

bool Dictionaries::addPersonal(const QString &word)
{
    if (word.isEmpty() || m_personal.contains(word))
        return true;
    m_personal.append(word);
    forgetVerdicts();
    for (const auto &loaded : std::as_const(m_loaded)) {
        if (loaded)
            loaded->hunspell->add(loaded->encode(word));
    }
    return writePersonal();
}

bool Dictionaries::removePersonal(const QString &word)
{
    if (!m_personal.removeOne(word))
        return true;
    forgetVerdicts();
    for (const auto &loaded : std::as_const(m_loaded)) {
        if (loaded)
            loaded->hunspell->remove(loaded->encode(word));
    }
    return writePersonal();
}

bool Dictionaries::writePersonal()
{
    QDir().mkpath(QFileInfo(m_personalFile).absolutePath());
    QSaveFile file(m_personalFile);
    if (file.open(QIODevice::WriteOnly | QIODevice::Text)) {
        for (const QString &word : std::as_const(m_personal))
            file.write(word.toUtf8() + '\n');
        if (file.commit())
            return true;
    }
    m_lastError = QStringLiteral("The personal word list %1 cannot be written: %2")
                      .arg(m_personalFile, file.errorString());
    return false;
}

} // namespace Vantry::Platform

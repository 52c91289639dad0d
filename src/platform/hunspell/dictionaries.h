#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include <memory>

class Hunspell;

namespace Vantry::Platform {

// The Hunspell dictionaries installed on the system, loaded on first use, together with
// the user's personal word list (one word a line, UTF-8) and the words ignored for the rest
// of the session. Personal and ignored words count as correct in every dictionary.
class Dictionaries
{
public:
    explicit Dictionaries(QStringList folders = defaultFolders(),
        QString personalWordList = defaultPersonalWordList());
    ~Dictionaries();
    Q_DISABLE_COPY_MOVE(Dictionaries)

    static QStringList defaultFolders();
    // Under the XDG data folder of the user.
    static QString defaultPersonalWordList();

    // The names of the installed dictionaries ("en_US"), sorted.
    QStringList installed() const { return m_installed; }
    // The dictionary of the user's locale, else en_US, else the first installed; empty when
    // none is installed.
    QString systemDictionary() const;
    // The .dic file of an installed dictionary.
    QString dictionaryFile(const QString &name) const;

    // Whether the dictionary knows the word; words of a dictionary that cannot be loaded
    // count as correct, with the reason in lastError().
    // Answers are remembered until forgetVerdicts or a change of the personal words.
    bool isCorrect(const QString &dictionary, const QString &word);
    // Starts a new check with no remembered answers.
    void forgetVerdicts();
    QStringList suggestions(const QString &dictionary, const QString &word);

    void ignore(const QString &word) { m_ignored.insert(word); }
    void unignore(const QString &word) { m_ignored.remove(word); }
    // Adds the word to the personal list and writes the list; false with lastError() set
    // when it cannot be written (the word is then known for this session only).
    bool addPersonal(const QString &word);
    bool removePersonal(const QString &word);
    QStringList personalWords() const { return m_personal; }

    QString lastError() const { return m_lastError; }

private:
    struct Loaded;
    Loaded *load(const QString &dictionary);
    bool writePersonal();

    QStringList m_folders;
    QString m_personalFile;
    QStringList m_installed;
    QStringList m_personal;
    QSet<QString> m_ignored;
    QHash<QString, std::shared_ptr<Loaded>> m_loaded;
    QString m_lastError;
};

} // namespace Vantry::Platform

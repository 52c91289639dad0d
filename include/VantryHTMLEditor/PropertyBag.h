#pragma once

#include <VantryHTMLEditor/vantryhtmleditor_export.h>

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <memory>

class QSettings;

namespace Vantry {

// Storage for the editor's persisted properties. The container (the host) owns the bag;
// the editor reads every property with its default and writes every property back.
//
// A stored value that cannot be taken as the requested kind (text for a Boolean, a number
// outside 16 bits for an Integer) is reported by the bag through its error handler, naming
// the property, and the default is returned instead: nothing wraps or converts silently.
class VANTRYHTMLEDITOR_EXPORT PropertyBag
{
public:
    enum class Kind
    {
        String,
        Boolean,
        Integer
    };

    using ErrorHandler = std::function<void(const QString &message)>;

    virtual ~PropertyBag();

    // Returns a QString, a bool or a qint16 (as int) according to kind.
    QVariant readProperty(const QString &name, const QVariant &defaultValue, Kind kind);
    void writeProperty(const QString &name, const QVariant &value, const QVariant &defaultValue);

    // Every error reported since the bag was made, oldest first.
    QStringList errors() const { return m_errors; }
    // Called for every error as it happens, in addition to recording it; the default
    // handler logs a warning.
    void setErrorHandler(ErrorHandler handler);

    // Converts a raw stored value to the requested kind. Returns an invalid QVariant and
    // fills *error when the value is of the wrong kind or out of range.
    static QVariant convert(const QString &name, const QVariant &raw, Kind kind, QString *error);

protected:
    PropertyBag();
    void reportError(const QString &message);

    // Raw access for the concrete storage. rawRead returns an invalid QVariant when the
    // key is absent.
    virtual QVariant rawRead(const QString &name) const = 0;
    virtual void rawWrite(const QString &name, const QVariant &value) = 0;
    virtual void rawRemove(const QString &name) = 0;

private:
    QStringList m_errors;
    ErrorHandler m_handler;
};

// A bag held in memory, for hosts that persist elsewhere and for tests.
class VANTRYHTMLEDITOR_EXPORT MemoryPropertyBag : public PropertyBag
{
public:
    MemoryPropertyBag() = default;

    bool contains(const QString &name) const { return m_values.contains(name); }
    QVariant value(const QString &name) const { return m_values.value(name); }
    void setValue(const QString &name, const QVariant &value) { m_values.insert(name, value); }
    QStringList keys() const { return m_values.keys(); }

protected:
    QVariant rawRead(const QString &name) const override;
    void rawWrite(const QString &name, const QVariant &value) override;
    void rawRemove(const QString &name) override;

private:
    QHash<QString, QVariant> m_values;
};

// A bag in an INI file, through QSettings. Keys live in the group given (default
// "HTMLEditorComponent"). Changes reach the file on sync() and on destruction.
class VANTRYHTMLEDITOR_EXPORT IniPropertyBag : public PropertyBag
{
public:
    explicit IniPropertyBag(
        const QString &fileName, const QString &group = QStringLiteral("HTMLEditorComponent"));
    ~IniPropertyBag() override;

    // Writes pending changes; returns false and reports an error when the file cannot be
    // written.
    bool sync();
    QString fileName() const;

protected:
    QVariant rawRead(const QString &name) const override;
    void rawWrite(const QString &name, const QVariant &value) override;
    void rawRemove(const QString &name) override;

private:
    QString key(const QString &name) const;

    std::unique_ptr<QSettings> m_settings;
    QString m_group;
    // A file QSettings could not parse is never rewritten (that would drop the lines it
    // skipped); changes to it are held here instead.
    bool m_malformed = false;
    QHash<QString, QVariant> m_unsaved;
};

} // namespace Vantry

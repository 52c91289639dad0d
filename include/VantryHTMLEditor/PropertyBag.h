#pragma once

#include <VantryHTMLEditor/vantryhtmleditor_export.h>

#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>

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

    // Told of every error as it happens, on the thread that uses the bag.
    class VANTRYHTMLEDITOR_EXPORT ErrorReceiver
    {
    public:
        ErrorReceiver() = default;
        virtual ~ErrorReceiver();
        Q_DISABLE_COPY_MOVE(ErrorReceiver)

        virtual void propertyBagError(const QString &message) = 0;
    };

    virtual ~PropertyBag();
    Q_DISABLE_COPY_MOVE(PropertyBag)

    // Returns a QString, a bool or a qint16 (as int) according to kind.
    [[nodiscard]] QVariant readProperty(
        const QString &name, const QVariant &defaultValue, Kind kind);
    void writeProperty(const QString &name, const QVariant &value, const QVariant &defaultValue);

    // Every error reported since the bag was made, oldest first.
    QStringList errors() const;
    // Told of every error as it happens, in addition to recording it; the bag does not own
    // it, and the receiver must outlive the bag or be unset first. Without one (the default)
    // errors are logged as warnings.
    void setErrorReceiver(ErrorReceiver *receiver);

    // Converts a raw stored value to the requested kind. Returns an invalid QVariant and
    // fills *error when the value is of the wrong kind or out of range.
    [[nodiscard]] static QVariant convert(
        const QString &name, const QVariant &raw, Kind kind, QString *error);

protected:
    PropertyBag();
    void reportError(const QString &message);

    // Raw access for the concrete storage. rawRead returns an invalid QVariant when the
    // key is absent.
    virtual QVariant rawRead(const QString &name) const = 0;
    virtual void rawWrite(const QString &name, const QVariant &value) = 0;
    virtual void rawRemove(const QString &name) = 0;

private:
    class Private;
    std::unique_ptr<Private> d;
};

// A bag held in memory, for hosts that persist elsewhere and for tests.
class VANTRYHTMLEDITOR_EXPORT MemoryPropertyBag : public PropertyBag
{
public:
    MemoryPropertyBag();
    ~MemoryPropertyBag() override;

    bool contains(const QString &name) const;
    QVariant value(const QString &name) const;
    void setValue(const QString &name, const QVariant &value);
    QStringList keys() const;

protected:
    QVariant rawRead(const QString &name) const override;
    void rawWrite(const QString &name, const QVariant &value) override;
    void rawRemove(const QString &name) override;

private:
    class Private;
    std::unique_ptr<Private> d;
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
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Vantry

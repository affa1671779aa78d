// The metadata, the entry point, and the casts of the plugin's object.
#include "contract/Rules.h"

#include <QLibrary>
#include <QMetaObject>

#include <set>

namespace hx {

namespace {

using InstanceFunction = QObject* (*)();

InstanceFunction instanceFunction(const LoadedPlugin& plugin)
{
    // The plugin keeps its library loaded. Unloading is its part alone: Qt 6 unmaps what others use.
    QLibrary library(plugin.filePath());
    return reinterpret_cast<InstanceFunction>(library.resolve("qt_plugin_instance"));
}

void* castTo(const RuleSubject& subject, const char* name)
{
    return subject.plugin.object().qt_metacast(name);
}

void judgeInterfaceId(const RuleSubject& subject, RuleResult* result)
{
    const QString expected = deviceInterfacePrefix() + subject.plugin.className();
    result->require(subject.plugin.interfaceId() == expected,
                    QStringLiteral("the interface identifier is \"%1\", expected \"%2\"")
                        .arg(subject.plugin.interfaceId(), expected));
}

void judgeClassName(const RuleSubject& subject, RuleResult* result)
{
    const QString real = QString::fromLatin1(subject.plugin.object().metaObject()->className());
    result->require(real == subject.plugin.className(),
                    QStringLiteral("the object's class is \"%1\", the metadata says \"%2\"")
                        .arg(real, subject.plugin.className()));
}

void judgeMetadataKeys(const RuleSubject& subject, RuleResult* result)
{
    std::set<QString> seen;
    for (const QString& key : subject.plugin.keys()) {
        result->require(seen.insert(key).second,
                        QStringLiteral("the key \"%1\" is named twice").arg(key));
        result->require(key == key.trimmed() && !key.contains(QLatin1Char(' ')),
                        QStringLiteral("the key \"%1\" has blanks").arg(key));
    }
    result->require(!seen.empty(), QStringLiteral("there is no key"));
}

void judgeCasts(const RuleSubject& subject, RuleResult* result)
{
    void* const device = &subject.device();
    for (const char* name : {"DeviceInterface", qobject_interface_iid<DeviceInterface*>()})
        result->require(castTo(subject, name) == device,
                        QStringLiteral("the cast to \"%1\" does not give the DeviceInterface part")
                            .arg(QLatin1String(name)));
    const QByteArray className = subject.plugin.className().toLatin1();
    result->require(castTo(subject, className.constData()) != nullptr,
                    QStringLiteral("the cast to \"%1\" does not give the object")
                        .arg(subject.plugin.className()));
    result->require(castTo(subject, "deviceinterface") == nullptr,
                    QStringLiteral("the cast to \"deviceinterface\" gives something: names are "
                                   "case-sensitive"));
    result->require(castTo(subject, nullptr) == nullptr,
                    QStringLiteral("the cast to no name gives something"));
}

void judgeSingleInstance(const RuleSubject& subject, RuleResult* result)
{
    const InstanceFunction instance = instanceFunction(subject.plugin);
    if (instance == nullptr) {
        result->failures << QStringLiteral("the library does not export qt_plugin_instance");
        return;
    }
    QObject* const first = instance();
    result->require(first == instance(), QStringLiteral("two calls of qt_plugin_instance give two "
                                                        "objects"));
    result->require(first == &subject.plugin.object(),
                    QStringLiteral("qt_plugin_instance gives another object than Qt's loader has"));
}

// Hosts destroy the plugin through its QObject; the next call must not give the dead one.
void judgeDestruction(const RuleSubject& subject, RuleResult* result)
{
    const InstanceFunction instance = instanceFunction(subject.plugin);
    if (instance == nullptr || instance() != &subject.plugin.object()) {
        result->skipped = QStringLiteral("instance.single does not hold");
        return;
    }
    bool destroyed = false;
    const QString request = subject.device().lookupStr(QStringLiteral("identify"));
    QObject* const object = &subject.plugin.object();
    QObject::connect(object, &QObject::destroyed, [&destroyed] { destroyed = true; });
    delete object;
    result->require(destroyed, QStringLiteral("deleting the object does not destroy its QObject"));
    auto* const device = qobject_cast<DeviceInterface*>(instance());
    result->require(device != nullptr, QStringLiteral("after the object was deleted, "
                                                      "qt_plugin_instance gives no plugin"));
    if (device == nullptr)
        return;
    result->require(device->lookupStr(QStringLiteral("identify")) == request,
                    QStringLiteral("the object made after that has another dictionary"));
    subject.plugin.object(); // the loader takes the new object, and deletes it in its time
}

} // namespace

std::vector<Rule> metadataRules()
{
    return {
        {"metadata.interface", "the interface identifier ends with the name of the class",
         judgeInterfaceId},
        {"metadata.class", "the metadata names the object's class", judgeClassName},
        {"metadata.keys", "there is a key, each once and without blanks", judgeMetadataKeys},
        {"casts", "casts by interface name, interface identifier and class name give the object",
         judgeCasts},
        {"instance.single", "every call of the instance function gives the same object",
         judgeSingleInstance},
    };
}

std::vector<Rule> destructionRules()
{
    return {{"instance.again", "once the object is deleted, the next call gives a new one",
             judgeDestruction}};
}

} // namespace hx

#include "AppPlugins.h"

#include <QHash>
#include <QPluginLoader>
#include <cstdio>
#include <mutex>

#include "AppPaths.h"

QObject* AppPlugins::Instance(const QString& name) {
    static std::mutex mutex;
    static QHash<QString, QObject*> loaded;  // null for one that failed: asked only once
    std::lock_guard lock(mutex);
    if (const auto found = loaded.constFind(name); found != loaded.constEnd()) return *found;
    const QString file = AppPaths::Plugins() + QStringLiteral("/lib%1.so").arg(name);
    QPluginLoader loader(file);
    QObject* instance = loader.instance();
    if (instance == nullptr) {
        std::fprintf(stderr, "pedometer: cannot load the plug-in %s (%s); going on without it\n",
                     qPrintable(file), qPrintable(loader.errorString()));
    }
    loaded.insert(name, instance);
    return instance;
}

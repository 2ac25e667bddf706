// The binder bases for the desk: objects of this process that no other process can reach.
#pragma GCC visibility push(default)
#include <binder/Binder.h>
#pragma GCC visibility pop

#include <binder/IInterface.h>

#include <unistd.h>

#include <map>
#include <memory>
#include <mutex>

namespace android {

IBinder::IBinder() = default;

IBinder::~IBinder() = default;

sp<IInterface> IBinder::queryLocalInterface(const String16& /*descriptor*/) {
    return nullptr;
}

status_t IBinder::shellCommand(const sp<IBinder>& /*target*/, int /*in*/, int /*out*/, int /*err*/,
                               Vector<String16>& /*args*/, const sp<IShellCallback>& /*callback*/,
                               const sp<IResultReceiver>& /*resultReceiver*/) {
    // A shell command is a transaction with a parcel, and the desk has neither.
    return INVALID_OPERATION;
}

status_t IBinder::getExtension(sp<IBinder>* out) {
    BBinder* local = localBinder();
    if (local == nullptr) {
        return INVALID_OPERATION;
    }
    *out = local->getExtension();
    return NO_ERROR;
}

status_t IBinder::getDebugPid(pid_t* outPid) {
    BBinder* local = localBinder();
    if (local == nullptr) {
        return INVALID_OPERATION;
    }
    *outPid = local->getDebugPid();
    return NO_ERROR;
}

bool IBinder::checkSubclass(const void* /*subclassID*/) const {
    return false;
}

BBinder* IBinder::localBinder() {
    return nullptr;
}

BpBinder* IBinder::remoteBinder() {
    return nullptr;
}

/// What few binders need, made at the first use.
class BBinder::Extras {
public:
    ~Extras() {
        for (const auto& [id, attached] : objects) {
            if (attached.cleanup != nullptr) {
                attached.cleanup(id, attached.object, attached.cookie);
            }
        }
    }

    struct Attached {
        void* object;
        void* cookie;
        object_cleanup_func cleanup;
    };

    std::mutex mutex;                        ///< guards `objects` alone
    std::map<const void*, Attached> objects; ///< by the id they were attached under
    sp<IBinder> extension;
    bool is_requesting_sid = false;
};

BBinder::BBinder() : mExtras(nullptr), mReserved0(nullptr) {}

BBinder::~BBinder() {
    delete mExtras.load(std::memory_order_acquire);
}

BBinder::Extras* BBinder::getOrCreateExtras() {
    Extras* extras = mExtras.load(std::memory_order_acquire);
    if (extras == nullptr) {
        auto made = std::make_unique<Extras>();
        // Another thread may have been faster: `extras` is then its object.
        if (mExtras.compare_exchange_strong(extras, made.get(), std::memory_order_acq_rel)) {
            extras = made.release();
        }
    }
    return extras;
}

const String16& BBinder::getInterfaceDescriptor() const {
    // Never destroyed, for binders are asked until the process has ended.
    static const String16& no_interface = *new String16;
    return no_interface;
}

bool BBinder::isBinderAlive() const {
    return true;
}

status_t BBinder::pingBinder() {
    return NO_ERROR;
}

status_t BBinder::dump(int /*fd*/, const Vector<String16>& /*args*/) {
    return NO_ERROR;
}

// NOLINTNEXTLINE(google-default-arguments)
status_t BBinder::transact(uint32_t code, const Parcel& data, Parcel* reply, uint32_t flags) {
    return code == PING_TRANSACTION ? pingBinder() : onTransact(code, data, reply, flags);
}

// NOLINTNEXTLINE(google-default-arguments)
status_t BBinder::onTransact(uint32_t /*code*/, const Parcel& /*data*/, Parcel* /*reply*/,
                             uint32_t /*flags*/) {
    return UNKNOWN_TRANSACTION;
}

// A local object ends with this process, and its clients with it: there is nobody to notify.
// NOLINTNEXTLINE(google-default-arguments)
status_t BBinder::linkToDeath(const sp<DeathRecipient>& /*recipient*/, void* /*cookie*/,
                              uint32_t /*flags*/) {
    return INVALID_OPERATION;
}

// NOLINTNEXTLINE(google-default-arguments)
status_t BBinder::unlinkToDeath(const wp<DeathRecipient>& /*recipient*/, void* /*cookie*/,
                                uint32_t /*flags*/, wp<DeathRecipient>* /*outRecipient*/) {
    return INVALID_OPERATION;
}

void BBinder::attachObject(const void* objectID, void* object, void* cleanupCookie,
                           object_cleanup_func func) {
    Extras* extras = getOrCreateExtras();
    const std::lock_guard<std::mutex> lock(extras->mutex);
    // An id that is in use keeps its object.
    extras->objects.emplace(objectID, Extras::Attached{object, cleanupCookie, func});
}

void* BBinder::findObject(const void* objectID) const {
    Extras* extras = mExtras.load(std::memory_order_acquire);
    if (extras == nullptr) {
        return nullptr;
    }
    const std::lock_guard<std::mutex> lock(extras->mutex);
    const auto found = extras->objects.find(objectID);
    return found == extras->objects.end() ? nullptr : found->second.object;
}

void BBinder::detachObject(const void* objectID) {
    Extras* extras = mExtras.load(std::memory_order_acquire);
    if (extras != nullptr) {
        const std::lock_guard<std::mutex> lock(extras->mutex);
        extras->objects.erase(objectID);
    }
}

BBinder* BBinder::localBinder() {
    return this;
}

bool BBinder::isRequestingSid() {
    const Extras* extras = mExtras.load(std::memory_order_acquire);
    return extras != nullptr && extras->is_requesting_sid;
}

void BBinder::setRequestingSid(bool requestSid) {
    // Without the extras the answer is false already.
    if (requestSid || mExtras.load(std::memory_order_acquire) != nullptr) {
        getOrCreateExtras()->is_requesting_sid = requestSid;
    }
}

sp<IBinder> BBinder::getExtension() {
    const Extras* extras = mExtras.load(std::memory_order_acquire);
    return extras == nullptr ? nullptr : extras->extension;
}

void BBinder::setExtension(const sp<IBinder>& extension) {
    getOrCreateExtras()->extension = extension;
}

pid_t BBinder::getDebugPid() {
    return getpid();
}

} // namespace android

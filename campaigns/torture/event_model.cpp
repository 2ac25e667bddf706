#include "event_model.h"

namespace torture {

EventModel::EventModel(const Plan& plan, const Outcome& baseline, std::string handler,
                       char call_level, bool converted, Thread thread)
    : Model(plan, baseline), handler_(std::move(handler)), call_level_(call_level),
      converted_(converted) {
    if (!enter(thread)) {
        no_environment_ = true;
        failed_ = true;
        return;
    }
    // The frame of the event.
    if (call("PushLocalFrame") != Fate::made) {
        leave();
        no_frame_ = true;
        failed_ = true;
    }
}

bool EventModel::enter(Thread thread) {
    if (thread == Thread::known) {
        return true;
    }
    if (thread == Thread::first) {
        if (call("GetEnv") == Fate::made) {
            return true;
        }
        // The baseline does not attach.
        skip(~size_t{0});
        attached_instead_ = call("AttachCurrentThread") == Fate::made;
        if (attached_instead_) {
            return true;
        }
    } else if (call("AttachCurrentThread") == Fate::made) {
        return true;
    }
    // After FUNCSTART of both functions.
    leaveAtLine(2);
    line(thread == Thread::first ? "L R getJNIEnv|AttachCurrentThread error!"
                                 : "L R getJNIEnv|AttachCurrentThread() error! index=1");
    line("L D recvEventFromServer|env is NULL!");
    return false;
}

void EventModel::ownFrame() {
    if (!failed_ && call("PushLocalFrame") != Fate::made) {
        clear();
    }
}

/// "D text" or "R text"; null: no line.
void EventModel::fail(const char* failure) {
    failed_ = true;
    if (failure != nullptr) {
        line(std::string("L ") + failure[0] + " " + handler_ + "|" + (failure + 2));
    }
}

void EventModel::text(const char* failure) {
    if (failed_) {
        return;
    }
    if (converted_ && !allocated()) {
        leaveBeforeNext();
    } else if (call("NewStringUTF") != Fate::made) {
        leave();
    } else {
        return;
    }
    line("L D OrgNewStringUTF|Failure, ret is NULL");
    fail(failure);
}

void EventModel::units() {
    if (!failed_ && call("NewString") != Fate::made) {
        leave();
        line("L D OrgNewString|Failure, ret is NULL");
        fail(nullptr);
    }
}

void EventModel::array(const char* function, const char* failure) {
    if (!failed_ && call(function) != Fate::made) {
        leave();
        fail(failure);
    }
}

void EventModel::construct(int count) {
    for (int i = 0; i < count && !failed_; ++i) {
        if (call("NewObjectV") != Fate::made) {
            leave();
            line("L D CallMethod|CallMethod, NewObject error!");
            const std::string failure = std::string(1, call_level_) + " CallMethod NG, ret = 1";
            fail(failure.c_str());
        }
    }
}

void EventModel::callback() {
    if (failed_) {
        return;
    }
    // A callback that throws counts as called. In the one case its code has not run.
    called_ = call("CallStaticVoidMethodV") != Fate::threw;
}

Outcome EventModel::end() {
    if (failed_ && !no_frame_ && !no_environment_) {
        line("L E recvEventFromServer|");
    }
    out_.answer = no_environment_ ? "-1" : failed_ ? "1" : "0";
    if (called_) {
        out_.callbacks = baseline_.callbacks;
    }
    Outcome outcome = finished();
    if (attached_instead_) {
        outcome.lines.at(2) = "L I getJNIEnv|GetEnv Failed but JNIEnv Attached!";
    }
    return outcome;
}

} // namespace torture

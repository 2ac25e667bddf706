#include "harness/service_double.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>

namespace harness {

std::string hex(const std::vector<uint8_t>& bytes) {
    std::string text;
    for (uint8_t byte : bytes) {
        char digits[4];
        std::snprintf(digits, sizeof digits, "%s%02x", text.empty() ? "" : " ", byte);
        text += digits;
    }
    return text;
}

std::vector<uint8_t> fromHex(const std::string& text) {
    std::string digits;
    for (char c : text) {
        if (std::isxdigit(static_cast<unsigned char>(c)) != 0) {
            digits += c;
        } else if (std::isspace(static_cast<unsigned char>(c)) == 0) {
            ADD_FAILURE() << "no hexadecimal text: " << text;
            return {};
        }
    }
    if (digits.size() % 2 != 0) {
        ADD_FAILURE() << "half a byte in: " << text;
    }
    std::vector<uint8_t> bytes;
    for (size_t at = 0; at + 1 < digits.size(); at += 2) {
        bytes.push_back(static_cast<uint8_t>(std::stoi(digits.substr(at, 2), nullptr, 16)));
    }
    return bytes;
}

std::string Message::text() const {
    char head[64];
    std::snprintf(head, sizeof head, "%08x", static_cast<unsigned>(message_id));
    std::string line = head;
    if (sync) {
        line += " sync";
    }
    if (had_references) {
        line += " surfaces=" + std::to_string(surface_count);
    }
    return line + ": " + hex(bytes);
}

std::shared_ptr<ServiceDouble> ServiceDouble::serve() {
    auto service = std::make_shared<ServiceDouble>();
    dtv::setServiceEndpoint(service);
    return service;
}

void ServiceDouble::setResult(int value) {
    std::lock_guard lock(mutex);
    result = value;
}

void ServiceDouble::setReply(std::vector<uint8_t> bytes, std::optional<int> size) {
    std::lock_guard lock(mutex);
    reply_bytes = std::move(bytes);
    reply_size = size;
}

void ServiceDouble::setReply(std::vector<uint8_t> bytes) {
    auto size = static_cast<int>(bytes.size());
    setReply(std::move(bytes), size);
}

std::vector<Message> ServiceDouble::take() {
    std::lock_guard lock(mutex);
    return std::exchange(messages, {});
}

std::vector<std::string> ServiceDouble::takeTexts() {
    std::vector<std::string> texts;
    for (const Message& message : take()) {
        texts.push_back(message.text());
    }
    return texts;
}

int ServiceDouble::onCommand(const dtv::Command& command) {
    std::lock_guard lock(mutex);
    keep(command, nullptr);
    return result;
}

int ServiceDouble::onSynchronousCommand(const dtv::Command& command, const dtv::Reply& reply) {
    std::lock_guard lock(mutex);
    keep(command, &reply);
    auto fits = std::min(reply_bytes.size(), static_cast<size_t>(std::max(reply.capacity, 0)));
    if (fits != 0 && reply.data != nullptr) {
        std::memcpy(reply.data, reply_bytes.data(), fits);
    }
    if (reply_size && reply.size != nullptr) {
        *reply.size = *reply_size;
    }
    return result;
}

void ServiceDouble::keep(const dtv::Command& command, const dtv::Reply* reply) {
    Message message{};
    message.message_id = command.message_id;
    auto bytes = static_cast<const uint8_t*>(command.data);
    if (bytes != nullptr) {
        message.bytes.assign(bytes, bytes + command.size);
    }
    message.sync = reply != nullptr;
    message.reply_capacity = reply != nullptr ? reply->capacity : 0;
    if (const TS_DTVSV_SP* references = command.references) {
        message.had_references = true;
        message.surface_count = references->surface_count;
        message.object_count = references->object_count;
        for (size_t i = 0; i < 3; ++i) {
            const android::Surface* surface = references->surface[i].get();
            message.surfaces[i] = {surface, surface != nullptr ? surface->getStrongCount() : 0};
        }
    }
    messages.push_back(std::move(message));
}

} // namespace harness

#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace refhost {

/// How far the signing in of one user has come, when it takes long. Used from every thread.
class SignInProgress {
public:
    struct State {
        std::string heading;
        std::string description;
        std::string done; ///< How much is done of `total`; empty where it is not counted.
        std::string total;
    };
    void tell(State state);
    State state() const;

private:
    mutable std::mutex mutex_;
    State state_;
};

/// The users who are signing in at present, by the secret name that their page gave the attempt.
class SignInAttempts {
public:
    /// Keeps an attempt for a scope.
    class Scope {
    public:
        Scope(SignInAttempts& attempts, std::string name);
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;
        ~Scope();
        const std::shared_ptr<SignInProgress>& progress() const { return progress_; }

    private:
        SignInAttempts& attempts_;
        const std::string name_;
        std::shared_ptr<SignInProgress> progress_ = std::make_shared<SignInProgress>();
    };
    /// Nothing when no such attempt is under way.
    std::shared_ptr<SignInProgress> find(const std::string& name) const;

private:
    mutable std::mutex mutex_;
    std::map<std::string, std::shared_ptr<SignInProgress>> underWay_;
};

} // namespace refhost

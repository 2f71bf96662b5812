// The leak check of the sanitizers, where the build has them.
#pragma once

// What the calling thread allocates while the object lives is not looked for.
class PauseLeakCheck {
public:
    PauseLeakCheck();
    ~PauseLeakCheck();
    PauseLeakCheck(const PauseLeakCheck&) = delete;
    PauseLeakCheck& operator=(const PauseLeakCheck&) = delete;
};

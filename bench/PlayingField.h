// The field as it plays: offline, sound off, log at ERROR.
#pragma once

#include "ze/log/log.h"
#include "ze/net/IConnectionState.h"

#include "vork2d/v5/PlayField.h"

class Offline final : public ze::net::IConnectionState {
public:
    [[nodiscard]] bool is_connected() const override { return false; }
};

class PlayingField {
public:
    PlayingField() {
        ze::log::configure();
        ze::log::set_log_level(ze::log::ERROR);
        field.timer.stop();
        field.flagSound = false;
        field.set_state_RUN(true);
    }

private:
    Offline connection;

public:
    vork2d::v5::PlayField field{800, 400, connection};
};

#pragma once

// The step detectors the pedometer can count with: the classic peak/trough machines of
// QuorPedometer, or AdaptiveStepDetector. Stored by name ("classic", "adaptive") in the
// "detector" preference; StepDetectorFactory converts.
enum class DetectorKind { Classic, Adaptive };

// The detector of a profile that has not chosen one, and of the tools unless told: the
// adaptive one counts right however the phone is carried.
inline constexpr DetectorKind kDefaultDetector = DetectorKind::Adaptive;

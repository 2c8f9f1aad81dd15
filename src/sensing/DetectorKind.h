#pragma once

// The step detectors the pedometer can count with: the classic peak/trough machines of
// QuorPedometer, or AdaptiveStepDetector. Stored by name ("classic", "adaptive") in the
// "detector" preference; StepDetectorFactory converts.
enum class DetectorKind { Classic, Adaptive };

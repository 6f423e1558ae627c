// The material-map plug-in: chooses a ground material for every cell from heights and water level.
// It declines until it has a rule to offer.

extern "C" {

bool initMatMap() { return false; }

void generateMatMap(int /*materialSize*/, unsigned* /*materials*/, const void* /*vertices*/,
                    float /*waterLevel*/, float /*heightScale*/) {}
}

// The surface-map plug-in: paints the colour picture of a surface tile from materials and textures.
// It declines until it has a painter to offer.

extern "C" {

bool initSurfaceMap() { return false; }
bool initSurfaceBmp() { return false; }
void generateSurfaceMap() {}
}

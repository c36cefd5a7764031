// bench_direct: a scene of boxes, circles and pins that calls Box2D 2.4 directly: the baseline of the layer's
// benchmark. Units as in Box2D.
#pragma once

struct DirectBody {
    bool dynamic;
    float x, y, angle, velocity_x, velocity_y;
    float half_w, half_h, radius; // a circle if the radius is above 0
    float density;
    int group;
};
struct DirectPin {
    int a, b; // indices of bodies
    float ax, ay, bx, by;
};
struct DirectScene;

DirectScene *direct_scene_new(const DirectBody *bodies, int body_count, const DirectPin *pins, int pin_count);
void direct_scene_free(DirectScene *scene);
// Reads all transforms, as the screen does before each step, then steps with the layer's number of sub-steps.
void direct_scene_step(DirectScene *scene, float seconds, int sub_steps);
void direct_scene_position(const DirectScene *scene, int body, float *x, float *y);

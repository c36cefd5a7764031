// Box2D 3.1 with the joint definitions of 3.2, which the project uses: 3.2 moved the common part of joint definitions
// to a separate record and replaced anchors by frames. Precedes the real header on the include path and includes it.
#pragma once

#include_next <box2d/box2d.h>

namespace box2d_version32 {

struct JointDef {
    b2BodyId bodyIdA, bodyIdB;
    b2Transform localFrameA, localFrameB; // rotations would matter only with a limit or spring
    bool collideConnected;
};
struct RevoluteJointDef {
    JointDef base;
};

inline RevoluteJointDef default_revolute_joint_def() {
    const b2Transform identity = {{0, 0}, {1, 0}};
    return {{{}, {}, identity, identity, false}};
}

inline b2JointId create_revolute_joint(b2WorldId world, const RevoluteJointDef *def) {
    b2RevoluteJointDef native = b2DefaultRevoluteJointDef();
    native.bodyIdA = def->base.bodyIdA;
    native.bodyIdB = def->base.bodyIdB;
    native.localAnchorA = def->base.localFrameA.p;
    native.localAnchorB = def->base.localFrameB.p;
    native.collideConnected = def->base.collideConnected;
    return b2CreateRevoluteJoint(world, &native);
}

} // namespace box2d_version32

#define b2RevoluteJointDef box2d_version32::RevoluteJointDef
#define b2DefaultRevoluteJointDef box2d_version32::default_revolute_joint_def
#define b2CreateRevoluteJoint box2d_version32::create_revolute_joint

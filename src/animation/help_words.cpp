// The help of the words of the animation: trajectories, dynamics,
// collisions, limits and laws.
#include "animation/help_words.h"

#include "kernel/keywords.h"
#include "language/help_table.h"

namespace {

constexpr HelpEntry ENTRIES[] = {
    {KW_acc, "acc: an accelerating law; rotx(a0,a1) vertex(..) acc vol(id) spreads values slow then fast; traj(id) .. acc spaces the rows; acc vol(id)=x,y,z the acceleration of a volume with mass", "cube(1) dim(10); rotx(0,1) vertex(1,2,3,4) acc vol(1); poi(2) vol(1)"},
    key_word(KW_adhere),
    {KW_anc, "anc: the anchoring of volumes in a chain; follow, lead, anc, reanc link volumes; CG anc vol(id) the origin of the matrix; yes anc reads led vertices through matrix anc", "cube(1) dim(10); CG anc vol(1)"},
    {KW_animate, "animate: traj(id) KIND(keys) animate(ni,order) vol(id) computes ni rows; traj(id) animate reads them; CG animate vol(id) how far the centre moved", "ball(1) dim(20); traj(1) tran(0,0,0,100,0,0) animate(10) vol(1); traj(1) animate"},
    {KW_attach, "attach: commands attached to an object, run at its display; attach vol(id)=v stores one", "cube(1); attach vol(1)=1; attach vol(1)"},
    {KW_collision, "collision vol(ids)=values writes the collision properties of volumes, collision vol(id) reads them; collision vol(a) vol(b) tests a pair: 1 when their spheres meet, then the distance of their places and the sum of their radii; collision near vol(a) vol(b) their nearest vertices; yes collision runs the collisions at each image", "ball(1) dim(10); ball(2) dim(10); collision vol(1) vol(2)"},
    {KW_dec, "dec: a decelerating law; rotx(a0,a1) vertex(..) dec vol(id) spreads values fast then slow; traj(id) .. dec spaces the rows", "cube(1) dim(10); rotx(0,1) vertex(1,2,3,4) dec vol(1); poi(2) vol(1)"},
    {KW_dynamic, "yes dynamic moves every volume with a mass by its force an image; dynamic alone reads the settings; dynamic mouse the pointer's place, speed and acceleration; dynamic image(id)=0 leaves an image out", "yes dynamic"},
    {KW_field, "field(id) meta(..) a quadric field, field(id) func(\"f\") a function field, field vol(id)=n the fields that push a volume (yes field)", "field(1) meta(1,1,1,0,0,0,0,0,0,-100); ball(1) dim(10); field vol(1)=1; field vol(1)"},
    {KW_follow, "follow vol(id)=a,b volume id leads volumes a and b (yes lead); follow vol(id) reads them", "cube(1); cube(2); cube(3); follow vol(1)=2,3; follow vol(1)"},
    {KW_force, "force vol(id)=x,y,z,c the force on a volume with mass (c, negative, damps); force add vol(id)=.. for one image; force vertex(k..) vol(id)=.. on vertices; force rota vol(id)=.. a turning force", "ball(1) dim(10); mass vol(1)=1; force vol(1)=0,0.05,0,-0.02; force vol(1)"},
    {KW_inside, "inside poi(x,y) line(x1,y1,...) [close] tests whether a point lies in a polygon: 1 inside, 0 outside", "inside poi(2,2) line(0,0,4,0,4,4,0,4) close"},
    {KW_law, "law(id) poi(x1,y1,0,x2,y2,0,...) a curve object of points (x,y), x monotonic; rotx(a0,a1) vertex(..) law(id) vol(id) spreads values along it; traj(id) .. law(id) [adjust] spaces the rows; field(id) law(..) the strength against distance", "law(1) poi(0,0,0,0.5,1,0,1,0.5,0)"},
    {KW_lead, "lead vol(b) the volume that leads volume b; lead vol(b)=a makes a lead b, as follow vol(a)=b does; yes lead moves the led volumes with their leader", "cube(1); cube(2); follow vol(1)=2; lead vol(2)"},
    {KW_mass, "mass vol(id)=m the mass of a volume (then it moves under yes dynamic); mass vertex(k..) vol(id)=m of vertices (under 0.0001: fixed); mass image(id)=m", "ball(1) dim(10); mass vol(1)=1; mass vol(1)"},
    {KW_pend, "pend: a pendulum law; rotx(a0,a1) vertex(..) pend vol(id) goes and comes back; traj(id) .. pend, pend(-1)", "cube(1) dim(10); rotx(0,1) vertex(1,2,3,4) pend vol(1); poi(2) vol(1)"},
    {KW_period, "period: traj(id) .. period(p,inc): 0 once, 1 loop, -1 go and come back; interaction period(25) the images a second asked for, period alone reads it", "ball(1); traj(1) tran(0,0,0,50,0,0) animate(5) period(1) vol(1); traj(1) period"},
    {KW_quat, "quat: quaternion rows of a trajectory, four a key: traj(id) quat(..) animate(n) vol(id)", "cube(1); traj(1) quat(0,0,0,1,0,1,0,1) animate(4) vol(1); traj(1) NP"},
    {KW_reanc, "reanc: anchors a led volume again where it stands; reanc vol(id)=v", "cube(1); reanc vol(1)=1; reanc vol(1)"},
    {KW_simple, "simple vol(id)=2 the simple form of the dynamic step (no bounds, springs or chains); status simple(2) for all", "ball(1); simple vol(1)=2; simple vol(1)"},
    {KW_speed, "speed vol(id) the speed of a volume with mass, speed vol(id)=x,y,z sets it; limit speed vol(id)=s bounds it; speed rota vol(id) the turning speed; interaction period speed the rate measured", "ball(1) dim(10); mass vol(1)=1; speed vol(1)=1,0,0; speed vol(1)"},
    {KW_spring, "spring vol(id)=k,c springs along the edges of the facets (rest lengths as first seen); eye poi(x,y,z) view(id) spring(k,c) pulls the eye", "grid(1) dim(10,10) secx(3) secy(3); spring vol(1)=0.1,-0.05; spring vol(1)"},
    {KW_traj, "traj(id) KIND(keys) [ext close] animate(ni,order) [period(p)] vol(ids): a trajectory of ni rows applied to objects; kinds tran, dila, axis, rota, rotx.., col, illum, any property; traj(id) NP, period, animate, var read it", "ball(1) dim(20); traj(1) tran(-150,-150,0,150,-150,0,150,150,0) ext close animate(100) period(1) vol(1); traj(1) NP"},
};

}  // namespace

void install_animation_help() { help_register("Animation: trajectories, dynamics, collisions and limits", ENTRIES); }

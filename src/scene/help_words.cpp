// The help of the scene's words: object kinds, volume primitives, the
// transformations of vertices and the options and sub-element words that
// shape them.
#include "scene/help_words.h"

#include "kernel/keywords.h"
#include "language/help_table.h"

namespace {

// The options every transformation takes.
#define TRANSFORM_OPTIONS                                                                             \
  "; options: vertex(n..) only those vertices; acc, dec, cos, sin, pend or law(id) spread the values "  \
  "from a start to an end along the vertices; poi(x,y,z) the centre (the origin by default), CG the "   \
  "mean of the vertices; ini(1) from the saved copy, validate saves the result; matrix changes the "     \
  "object's matrix instead of its vertices"

constexpr HelpEntry ENTRIES[] = {
    {KW_alea, "alea reads and alea(n) sets the seed of the random table; alea(ax,ay,az) vol(ids) adds to each coordinate of the vertices a value drawn from the table between -a and a, the same again for the same seed", "cube(1) dim(10); alea(1,1,1) vol(1); poi(1) vol(1)"},
    {KW_alex, "alex(a) vol(ids) adds to the x of each vertex a random value between -a and a (aley, alez the same on y, z)", "cube(1) dim(10); alex(2) vol(1); poi(1) vol(1)"},
    {KW_aley, "aley(a) vol(ids) adds to the y of each vertex a random value between -a and a", "cube(1) dim(10); aley(2) vol(1); poi(1) vol(1)"},
    {KW_alez, "alez(a) vol(ids) adds to the z of each vertex a random value between -a and a", "cube(1) dim(10); alez(2) vol(1); poi(1) vol(1)"},
    {KW_ang, "ang: an option, angles; rev(id) poi(..) ang(a,a0) turns the profile by a radians from a0; ang vol(id)=v stores angles", "rev(1) poi(10,0,0,10,20,0) ang(3.14,0) secx(8); limit vol(1)"},
    {KW_axis, "axis: an option, a direction; rota(a) axis(x,y,z) vol(ids) turns about that axis; axis view(id)=x,y,z a view looking along it; axis vol(id) reads the stored one", "cube(1) dim(10); rota(0.5) axis(1,1,0) vol(1); poi(1) vol(1)"},
    {KW_ball, "ball(id) dim(r) [secy(ny)] [secx(nx)] [poi(x,y,z) dila rotx roty rotz] [sphere]: a sphere of ny+1 rings of nx vertices (secy 3 and secx twice secy by default); ball(id) alone: the unit ball of 8 sections", "ball(1) dim(20) secy(8); limit vol(1)"},
    {KW_box, "box vol(id) the bounding box kept with a volume, min x,y,z then max x,y,z, as limit vol(id) computes it", "cube(1) dim(5); limit vol(1); box vol(1)"},
    {KW_close, "close: an option; rev(id) .. close and prism(id) .. close join the last section to the first; traj(id) .. ext close a closed curve; inside .. close a closed polygon", "prism(1) poi(0,0,0,10,0,0,0,10,0) poi(0,0,5) secy(2) close; limit vol(1)"},
    {KW_coe, "coe: an option, a coefficient or weights; CG coe(w1,w2,..) vol(id) a weighted centre; coe vol(id)=c stores it; device(n) .. coe(c) scales values read", "cube(1) dim(10); CG coe(1,1,2,2,1,1,2,2) vol(1)"},
    key_word(KW_concat),
    key_word(KW_contour),
    {KW_coord, "coord vertex[(n..)] vol(id) the texture coordinates u,v of vertices, computed when stale", "ball(1) dim(10) secy(4); coord vertex(1,2) vol(1)"},
    {KW_cube, "cube(id) dim(dx,dy,dz): 8 vertices at +-d, 6 facets (dim(d) for all three)", "cube(1) dim(50); limit vol(1)"},
    {KW_cut, "cut: an option; image(id) cut(x,y,nx,ny) keeps a part of an image; interaction cut(1) freezes the loop, cut(0) one image, cut(-1) runs; cut genetic(id) [cut(n)] the crossover log of a population (cut, parent a, parent b a child)", "image(1) dim(32,32) col(1,0,0); image(1) cut(0,0,16,16)"},
    {KW_cutx, "cutx(k) vol(ids) cuts along x at the plane of the centre c: k=0 puts every vertex on the plane, k>0 brings back to it those beyond it, k<0 those below it (cuty, cutz the same along y, z)" TRANSFORM_OPTIONS, "cube(1) dim(10); cutx(0.5) vol(1); poi(1) vol(1)"},
    {KW_cuty, "cuty(k) vol(ids) cuts along y at the plane of the centre, as cutx does along x" TRANSFORM_OPTIONS, "cube(1) dim(10); cuty(0.5) vol(1); poi(1) vol(1)"},
    {KW_cutz, "cutz(k) vol(ids) cuts along z at the plane of the centre, as cutx does along x" TRANSFORM_OPTIONS, "cube(1) dim(10); cutz(0.5) vol(1); poi(1) vol(1)"},
    {KW_dila, "dila(kx,ky,kz) vol(ids) scales the vertices about the centre" TRANSFORM_OPTIONS, "cube(1) dim(10); dila(2,1,1) vol(1); poi(1) vol(1)"},
    {KW_dilx, "dilx(k) vol(ids) scales the vertices along x about the centre (dily, dilz along y, z)" TRANSFORM_OPTIONS, "cube(1) dim(10); dilx(3) vol(1); poi(1) vol(1)"},
    {KW_dily, "dily(k) vol(ids) scales the vertices along y" TRANSFORM_OPTIONS, "cube(1) dim(10); dily(3) vol(1); poi(1) vol(1)"},
    {KW_dilz, "dilz(k) vol(ids) scales the vertices along z" TRANSFORM_OPTIONS, "cube(1) dim(10); dilz(3) vol(1); poi(1) vol(1)"},
    {KW_distort, "distort(k) axis(x,y,z) vol(ids) twists the volume about the axis by k" TRANSFORM_OPTIONS, "cube(1) dim(10); distort(0.05) axis(0,1,0) vol(1); poi(1) vol(1)"},
    {KW_envelope, "vol(id) envelope(a,b) secx(n): a volume joining the outlines of volumes a and b; envelope vol(id) reads the list", "ball(3) dim(10) secy(4); ball(4) dim(20) secy(4); vol(7) envelope(3,4) secx(8); limit vol(7)"},
    {KW_ext, "ext: an option; generate ext(d) vol(id) the surface given a thickness d; traj(id) .. ext(n,tension) a smooth curve of n points a segment", "cube(1) dim(10); generate ext(2) vol(1); x=poi generate vol(1); NP(x)"},
    {KW_fac, "fac(a,b,c,...) the facets of a volume, vertices numbered from 1; vol(id) poi(..) fac(..) makes one; fac vol(id) reads them, fac(k) vol(id)=a,b,c replaces facet k; fac as an option selects facets: col fac(2) vol(id)", "vol(1) poi(0,0,0,10,0,0,10,10,0) fac(1,2,3); fac vol(1)"},
    {KW_frac, "generate frac(n) vol(id): a refined copy of the facets, n divisions a side, kept as poi generate and fac generate", "cube(1) dim(10); generate frac(2) vol(1); x=poi generate vol(1); NP(x)"},
    key_word(KW_geod),
    {KW_grid, "grid(id) dim(dx,dy,dz) secx(nx) secy(ny) secz(nz): a lattice of cells of dx by dy by dz", "grid(1) dim(10,10) secx(4) secy(3); limit vol(1)"},
    key_word(KW_hole),
    {KW_hom, "hom(k) vol(ids) scales the vertices by k in all three directions about the centre" TRANSFORM_OPTIONS, "cube(1) dim(10); hom(2) vol(1); poi(1) vol(1)"},
    key_word(KW_inherit),
    key_word(KW_intersection),
    {KW_lattice, "lattice: the sub-element word of the cells of a lattice volume in the keys of properties, as vertex is of vertices; a volume without a lattice property answers NIL", "grid(1) dim(10,10) secx(2) secy(2); lattice vol(1)"},
    {KW_line, "line: an option, a polyline or a band; inside poi(x,y) line(x1,y1,...) close tests a point; read image(id) name(\"f.raw\") line(k,n) reads a band; line vol(id)=.. stores points", "inside poi(1,1) line(0,0,4,0,4,4,0,4) close"},
    {KW_meta, "meta: a qualifier; field(id) meta(a,b,c,...) a quadric field; meta vol(id)=.. stores a meta shape; yes meta runs the meta stage of each image; meta rand genetic(ids) [= c,m] the crossover and mutation rates of populations (meta alea: drawn from the alea table)", "cube(1); meta vol(1)=1,1,1; meta vol(1)"},
    key_word(KW_morphing),
    {KW_move, "move: with a transformation, move changes the object's place through its matrix as matrix does: rotx(a) move vol(id); speed move view(id) reads the motion of a pulled eye", "cube(1) dim(10); tran(5,0,0) move vol(1); poi(1) vol(1)"},
    {KW_near, "near vertex[(n..)] vol(id) the neighbours of vertices; near vertex dist vol(id) the lengths of the edges; radius near vertex(n) vol(id) half the shortest edge; near image(id) dup(n) passes of the cellular rule", "cube(1) dim(10); near vertex(1) vol(1)"},
    {KW_NF, "NF: in the making of a volume, vol(id) NP(n) NF(n) gives n vertices at the origin (placed later with poi(k) vol(id)=x,y,z) and one facet joining them", "vol(1) NP(4) NF(4); fac vol(1)"},
    {KW_normal, "normal(x,y,z) the current normal; normal fac[(f..)] vol(id), normal vertex[(n..)] vol(id) unit normals of facets and vertices", "cube(1) dim(10); normal fac(1) vol(1)"},
    {KW_object, "object(id) word(values)... makes generic objects (ids are numbers, names or both); word object(id)=v sets a property, word object(id) reads it", "object(2,\"lamp\"); col object(2)=1,0,0; col object(2)"},
    {KW_particle, "particle: a volume kind of free points; particle vol(id)=.. stores it; generate genetic(id) particle(n,L) rand makes a population of n strings", "cube(1); particle vol(1)=1; particle vol(1)"},
    {KW_pipe, "vol(id) pipe(a,b): a volume joining the sections of volumes a and b, facet by facet", "ball(3) dim(10) secy(4); ball(4) dim(20) secy(4); vol(6) pipe(3,4); limit vol(6)"},
    {KW_poi, "poi(x,y,z,...) the vertices of a volume; poi vol(id) reads them, poi vol(id)=.. replaces them, poi(k) vol(id)=x,y,z moves vertex k; as an option, poi(x,y,z) is a centre or a place: rotx(a) poi(0,0,0) vol(id), disk image(id) poi(x,y)", "cube(1) dim(10); poi(1) vol(1)"},
    {KW_prism, "prism(id) poi(base x,y,z,...) poi(dx,dy,dz) secy(n) [close]: a base moved along a displacement in n steps", "prism(1) poi(0,0,0,10,0,0,0,10,0) poi(0,0,3) secy(2); limit vol(1)"},
    {KW_radius, "radius [vertex(n..)] vol(ids) the largest distance from the mean point; radius near vertex(n) vol(id) half the shortest edge at a vertex; as an option, disk image(id) .. radius(r)", "cube(1) dim(10); radius vol(1)"},
    {KW_rev, "rev(id) poi(x,y,z,...) [ang(a,a0)] secx(n) [close]: a profile turned about y in n sections (give it from bottom to top, +y down, so that its facets face outwards)", "rev(1) poi(10,20,0,10,0,0) secx(12); limit vol(1)"},
    {KW_rota, "rota(a) axis(x,y,z) vol(ids) turns the vertices by a radians about the axis" TRANSFORM_OPTIONS, "cube(1) dim(10); rota(0.5) axis(0,1,1) vol(1); poi(1) vol(1)"},
    {KW_rotx, "rotx(a) vol(ids) turns the vertices by a radians about x (roty, rotz about y, z); rotx(a0,a1) vertex(..) acc vol(id) spreads the angle" TRANSFORM_OPTIONS, "cube(1) dim(10); rotx(0.5) vol(1); poi(1) vol(1)"},
    {KW_roty, "roty(a) vol(ids) turns the vertices by a radians about y" TRANSFORM_OPTIONS, "cube(1) dim(10); roty(0.5) vol(1); poi(1) vol(1)"},
    {KW_rotz, "rotz(a) vol(ids) turns the vertices by a radians about z" TRANSFORM_OPTIONS, "cube(1) dim(10); rotz(0.5) vol(1); poi(1) vol(1)"},
    {KW_secx, "secx: an option, sections along x (columns); ball(id) secx(n), rev(id) secx(n), grid(id) secx(n), envelope(a,b) secx(n); CG secx(i) vol(id) the centres of columns", "ball(1) dim(10) secy(4) secx(6); x=poi vol(1); NP(x)"},
    {KW_secy, "secy: an option, sections along y (rings, rows); ball(id) secy(n), prism(id) secy(n), grid(id) secy(n); CG secy(j) vol(id) the centres of rings", "ball(1) dim(10) secy(6); CG secy(2) vol(1)"},
    {KW_secz, "secz: an option, sections along z; grid(id) dim(dx,dy,dz) secx(nx) secy(ny) secz(nz)", "grid(1) dim(10,10,10) secx(2) secy(2) secz(2); x=poi vol(1); NP(x)"},
    key_word(KW_segment),
    {KW_sphere, "sphere: with ball, ball(id) .. sphere keeps the shape in the shared unit sphere scaled by dim", "ball(1) dim(10) sphere; radius vol(1)"},
    key_word(KW_split),
    {KW_syma, "syma(x,y,z) vol(ids) mirrors the vertices through the point x,y,z" TRANSFORM_OPTIONS, "cube(1) dim(10); syma(0,0,0) vol(1); poi(1) vol(1)"},
    {KW_symx, "symx(x) vol(ids) mirrors the vertices across the plane at x (symy, symz the same across y, z)" TRANSFORM_OPTIONS, "cube(1) dim(10); symx(5) vol(1); poi(1) vol(1)"},
    {KW_symy, "symy(y) vol(ids) mirrors the vertices across the plane at y" TRANSFORM_OPTIONS, "cube(1) dim(10); symy(5) vol(1); poi(1) vol(1)"},
    {KW_symz, "symz(z) vol(ids) mirrors the vertices across the plane at z" TRANSFORM_OPTIONS, "cube(1) dim(10); symz(5) vol(1); poi(1) vol(1)"},
    {KW_tran, "tran(dx,dy,dz) vol(ids) moves the vertices; tran(..) matrix vol(id) moves the object's matrix instead" TRANSFORM_OPTIONS, "cube(1) dim(10); tran(20,0,0) vol(1); poi(1) vol(1)"},
    key_word(KW_triangulate),
    {KW_validate, "validate: an option that keeps a result; rotx(a) validate vol(id) saves the new vertices as the copy that ini(1) starts from; device(ids) validate(1) the mean of the slots; generate network(id) validate(n) n passes; validate genetic(id) particle(i..) scores strings of a population (a second validate: the networks' test pass)", "cube(1) dim(10); rotx(0.3) validate vol(1); poi(1) vol(1)"},
    {KW_vertex, "vertex: a sub-element word, the vertices of a volume by number from 1; rotx(a) vertex(1,2) vol(id) moves those, col vertex(2) vol(id)=r,g,b one colour, normal vertex vol(id) per vertex", "cube(1) dim(10); col vertex(2) vol(1)=0,0,1; col vertex(2) vol(1)"},
    {KW_vol, "vol(id) poi(x,y,z,...) fac(1,2,3,...) makes a volume; vol(id) pipe(a,b), envelope(a,b) secx(n), arc(r,a0,a1,n) dim(t) secx(m) (a tube along an arc, angles in radians); vol(id) vol(a) vol(b) the union; word vol(id)=v sets a property, word vol(id) reads it", "vol(1) poi(0,0,0,10,0,0,10,10,0) fac(1,2,3) name(\"tri\")"},
};

}  // namespace

void install_scene_help() { help_register("Objects and volumes", ENTRIES); }

// Texts of the minimal environment: the options, keywords and messages of
// the interpreter vocabulary (0) and the graphic one (1), in the file
// formats read by lire_kom and lire_mes. env/ ships the same content.
#include "kernel/vocab.h"

const char* const ENV_TEXT_0 = R"TXT(mac=PC
env=env/
ima=ima/
exe=exe/
buf=100000
eva=100000
com=10000
esc=27
voc1=Voc_eng
voc2=Voc_xxx
)TXT";

const char* const ENV_TEXT_1 = R"TXT(cx=1
cy=-1
rvb=8
zbu=1
alea=10000
gra=1
son=
PER=100
)TXT";

const char* const KOM_TEXT_0 = R"TXT(|0: aba
0,-1,0,0
.
|1: abs
0,-1,0,1
.
|2: acos
0,-1,0,0
.
|3: acosh
0,-1,0,0
.
|4: add
0,-1,0,1
.
|5: alias
0,0,0,0
.
|6: arc
0,-1,0,0
.
|7: ascii
0,-1,0,0
.
|8: asin
0,-1,0,0
.
|9: asinh
0,-1,0,0
.
|10: atan
0,-1,0,0
.
|11: atanh
0,-1,0,0
.
|12: atof
0,-1,0,0
.
|13: atoi
0,-1,0,0
.
|14: auto
0,-1,0,1
.
|15: average
0,-1,0,0
.
|16: break
0,-1,0,0
.
|17: bye
0,-1,0,1
.
|18: calloc
0,-1,0,1
.
|19: case
0,-1,0,0
.
|20: CG
0,-1,0,1
.
|21: char
0,-1,0,1
.
|22: clean
0,-1,0,1
.
|23: compile
0,1,0,1
.
|24: cos
0,-1,0,0
.
|25: cosh
0,-1,0,0
.
|26: debug
0,0,0,1
.
|27: default
0,-1,0,0
.
|28: demo
0,-1,0,0
.
|29: dim
0,-1,0,1
.
|30: dist
0,-1,0,1
.
|31: directory
0,-1,0,1
.
|32: dup
0,-1,0,1
.
|33: edit
0,1,0,1
72.0,21.0
|34: else
0,-1,0,0
.
|35: end
0,-1,0,1
.
|36: ent
0,-1,0,0
.
|37: error
0,1,0,1
0.0
|38: exec
0,-1,0,1
.
|39: exit
0,-1,0,0
.
|40: exp
0,-1,0,0
.
|41: extern
0,-1,0,0
.
|42: fclose
0,-1,0,1
.
|43: float
0,-1,0,1
.
|44: fopen
0,-1,0,1
.
|45: for
0,-1,0,1
.
|46: format
0,0,0,1
.
|47: fread
0,-1,0,1
.
|48: func
0,0,0,1
.
|49: fwrite
0,-1,0,1
.
|50: generate
0,0,0,1
.
|51: getline
0,0,0,1
.
|52: getword
0,-1,0,1
.
|53: global
0,-1,0,0
.
|54: GO
0,-1,0,0
.
|55: goto
0,-1,0,0
.
|56: grep
0,-1,0,1
.
|57: help
0,-1,0,1
.
|58: history
0,1,0,0
.
|59: if
0,-1,0,1
.
|60: inclu
0,-1,0,0
.
|61: ini
0,-1,0,1
.
|62: input
0,1,0,0
.
|63: int
0,-1,0,0
.
|64: inv
0,-1,0,1
.
|65: limit
0,-1,0,1
.
|66: link
0,1,1,1
.
|67: LIST
0,-1,0,1
.
|68: list
0,-1,0,1
.
|69: local
0,0,0,1
.
|70: log
0,-1,0,0
.
|71: malloc
0,-1,0,1
.
|72: matrix
0,1,0,1
.
|73: max
0,-1,0,1
.
|74: message
0,1,0,1
.
|75: min
0,-1,0,1
0
|76: module
0,-1,0,1
.
|77: name
0,-1,0,1
.
|78: NIL
0,-1,0,0
.
|79: no
0,-1,0,1
.
|80: NP
0,-1,0,1
.
|81: number
0,-1,0,1
.
|82: PI
0,-1,0,1
3.14159265358979323846
|83: precision
0,0,0,1
0.1
|84: print
0,-1,0,0
.
|85: product
0,-1,0,1
.
|86: puls
0,-1,0,1
.
|87: rand
0,-1,0,1
.
|88: randf
0,-1,0,0
.
|89: rand2f
0,-1,0,0
.
|90: rand2
0,-1,0,0
.
|91: NL
0,-1,0,0
.
|92: read
0,-1,0,1
.
|93: rem
0,1,0,1
.
|94: return
0,-1,0,0
.
|95: ring
0,0,0,0
.
|96: scalar
0,-1,0,0
.
|97: sin
0,-1,0,0
.
|98: sinh
0,-1,0,0
.
|99: sort
0,0,0,1
0.0
|100: sum
0,-1,0,0
.
|101: sqrt
0,-1,0,0
.
|102: static
0,-1,0,1
.
|103: STOP
0,-1,0,1
.
|104: string
0,-1,0,0
.
|105: stringf
0,-1,0,0
.
|106: status
0,-1,0,1
0.0
|107: switch
0,-1,0,0
.
|108: system
0,0,0,1
.
|109: tan
0,-1,0,0
.
|110: tanh
0,-1,0,0
.
|111: time
0,1,0,1
0.0,0.0,0.0
|112: type
0,0,0,1
.
|113: unit
0,-1,0,0
.
|114: var
0,-1,0,1
.
|115: vector
0,-1,0,0
.
|116: wait
0,-1,0,0
.
|117: while
0,-1,0,1
.
|118: write
0,1,0,1
.
|119: yes
0,-1,0,1
.
|120: reload
0,0,0,1
.
)TXT";

const char* const KOM_TEXT_1 = R"TXT(|0: above
0,-1,0,1
.
|1: acc
0,0,0,1
0.0,0.0,0.0
|2: adhere
0,0,0,1
.
|3: adjust
0,0,0,1
.
|4: aim
0,-1,0,1
0.0,0.0,0.0
|5: alea
3,0,0,1
.
|6: alex
3,-1,0,1
.
|7: aley
3,-1,0,1
.
|8: alez
3,-1,0,1
.
|9: alphabet
0,0,0,1
.
|10: ambiance
0,0,0,1
0.0,0.0,0.0
|11: anc
1,0,0,1
.
|12: ang
0,-1,0,1
0.0,0.0,0.0
|13: animate
0,1,0,1
.
|14: attach
0,0,0,1
.
|15: audio
0,0,0,1
.
|16: axis
0,-1,0,1
0.0,1.0,0.0
|17: back
0,-1,0,1
0.0,0.0,0.75,0.0,0.0,191.25
|18: ball
0,-1,0,1
100.0,12.0
|19: behind
0,1,0,1
0.0
|20: below
0,-1,0,1
.
|21: bitmap
0,1,0,1
.
|22: box
0,0,0,1
.
|23: brush
1,0,0,1
.
|24: camera
0,-1,0,1
0.0
|25: center
0,-1,0,1
0.0,0.0,0.0
|26: cin
1,-1,0,1
.
|27: clip
0,1,0,2
0.0,0.0,0.0,0.0
|28: close
0,1,0,1
1.0
|29: coe
0,-10,0,1
1.0,1.0,1.0
|30: col
0,-1,0,1
1.0,1.0,1.0
|31: collision
0,0,0,1
.
|32: concat
0,1,0,1
.
|33: contour
1,-1,0,1
.
|34: coord
0,-1,0,1
0.0,0.0
|35: cube
0,-1,0,1
.
|36: cut
0,1,0,1
10.0,32000.0
|37: cutx
0,-1,0,1
.
|38: cuty
0,-1,0,1
.
|39: cutz
0,-1,0,1
.
|40: dec
0,-1,0,0
.
|41: depth
0,0,0,1
0.0,0.0,0.0,1.0,1.0,1.0,200.0,2000.0
|42: device
0,1,0,1
0.0,0.0,0.0,10.0,500.0,2.0,1.0
|43: dila
3,-1,0,1
.
|44: dilx
3,-1,0,1
.
|45: dily
3,-1,0,1
.
|46: dilz
3,-1,0,1
.
|47: disk
0,-1,0,2
.
|48: displ
0,1,0,1
0.0
|49: distort
1,-1,0,1
0.0,0.0,0.0
|50: draw
0,-1,0,1
.
|51: dynamic
0,0,0,1
2.0
|52: envelope
1,0,0,1
.
|53: ext
0,0,0,1
0.0,0.0,0.0
|54: eye
0,-1,0,1
0.0,0.0,-100.0
|55: fac
0,-1,0,1
.
|56: field
0,0,0,1
.
|57: foc
0,-1,0,1
1.0
|58: fog
0,0,0,1
.
|59: follow
v1,0,0,1
.
|60: font
0,-1,0,1
.
|61: force
0,1,0,1
0.0,0.0,0.0,0.0
|62: frac
0,0,0,1
[6]
|63: frame
0,-1,0,1
.
|64: front
0,-1,0,0
.
|65: genetic
0,-1,0,1
.
|66: geod
1,-1,0,1
0.0,0.0
|67: graphic
0,1,0,1
1.0
|68: grid
0,-1,0,1
100.0,1.0,1.0,1.0
|69: hole
1,1,0,1
.
|70: hom
3,-1,0,1
.
|71: hsv
0,-1,0,1
0.0,1.0,0.0
|72: illum
0,0,0,1
1.0,1.0,0.0,0.0,0.0
|73: image
0,0,0,1
.
|74: inherit
0,1,0,1
.
|75: inside
0,0,0,1
.
|76: interaction
0,0,0,1
.
|77: interpol
0,0,0,1
.
|78: intersection
0,-1,0,1
.
|79: lattice
0,0,0,1
0.0,0.0,0.0,0.0,0.0,0.0,0.0
|80: law
0,0,0,1
.
|81: lead
1,1,0,1
.
|82: left
0,-1,0,0
.
|83: light
0,0,0,1
.
|84: line
0,0,0,1
.
|85: luminance
0,0,0,1
.
|86: lut
0,0,0,1
.
|87: mass
0,0,0,1
0.0
|88: memory
0,0,0,1
.
|89: menu
0,1,0,1
.
|90: meta
0,0,0,1
.
|91: morphing
0,-1,0,1
.
|92: motif
0,0,0,1
.
|93: motionblur
0,-1,0,1
.
|94: mouse
0,1,0,1
0.0,0.0
|95: move
0,-1,0,1
0.0,0.0,0.0
|96: near
0,-1,0,1
.
|97: neuron
0,-1,0,1
[8]
|98: network
0,-1,0,1
.
|99: NF
0,-1,0,1
.
|100: normal
0,0,0,1
0.0,0.0,0.0
|101: object
1,0,0,1
.
|102: palette
0,1,0,1
.
|103: pan
0,-1,0,1
0.0,0.0
|104: particle
0,0,0,1
0.0,0.0,0.0,0.0,0.0,0.0
|105: pend
0,-10,0,0
.
|106: period
0,-1,0,1
75
|107: pers
0,1,0,1
0.0,0.0,0.0,0.0
|108: pipe
0,-1,0,1
0.0,0.0
|109: pixel
0,-1,0,2
.
|110: play
0,-1,0,1
.
|111: poi
0,-1,0,1
-750.0,-500.0,-1000.0
|112: prism
1,-1,0,1
0.0,0.0,0.0
|113: pull
1,1,0,1
.
|114: put
0,-1,0,1
.
|115: quat
1,-1,0,1
.
|116: radius
0,0,0,1
10.0
|117: reanc
0,0,0,1
.
|118: rectangle
0,-1,0,1
.
|119: rev
1,-1,0,1
0.0,0.0,0.0
|120: right
0,-1,0,0
.
|121: roll
0,-1,0,1
0.0
|122: rota
2,-1,0,1
.
|123: rotx
2,-1,0,1
.
|124: roty
2,-1,0,1
.
|125: rotz
2,-1,0,1
.
|126: scale
0,1,0,1
1.1,2.2
|127: screen
0,1,0,1
0.0,0.0,0.75
|128: secx
1,0,0,1
.
|129: secy
3,-1,0,1
.
|130: secz
3,-1,0,1
.
|131: see
0,0,0,1
60000.0
|132: segment
0,0,0,2
.
|133: shadow
0,0,0,1
.
|134: simple
0,0,0,1
.
|135: smooth
0,-1,0,1
.
|136: spe
0,-1,0,1
.
|137: speed
0,1,0,1
0.0,0.0,0.0
|138: sphere
1,0,0,1
0.0,0.0,0.0
|139: split
0,-1,0,1
.
|140: spring
0,-1,0,1
0.0,0.0
|141: stereo
0,-1,0,1
0.0,0.0,0.0,0.0,0.0,0.0,0.0,0.0,0.0
|142: stock
1,0,0,1
.
|143: syma
1,-1,0,1
.
|144: symx
1,-1,0,1
.
|145: symy
1,-1,0,1
.
|146: symz
1,-1,0,1
.
|147: text
0,1,0,1
.
|148: texture
0,0,0,1
.
|149: traj
1,1,0,1
.
|150: tran
1,-1,0,1
.
|151: transp
0,0,0,1
1.0
|152: triangulate
0,-1,0,1
.
|153: validate
1,0,0,1
.
|154: vertex
1,0,0,1
.
|155: video
0,-1,0,1
1.0,1.0
|156: view
0,0,0,1
.
|157: vol
1,0,0,1
.
|158: win
0,-1,0,1
0.0,0.0,0.0,0.0
|159: zbuf
0,1,0,1
0.0
|160: zoom
0,-1,0,1
1.0,1.0
)TXT";

const char* const MES_TEXT_0 = R"TXT(|0: ?
|1: ------------------------------\n
|2: OVERFLOW\7\n
|3: PATENTHESIS ERROR ()\7\n
|4: line
|5: SEE YOU SOON!...\n
|6: ILLEGAL ASSIGNMENT\7\n
|7: new function
|8: ABANDONMENT\n
|9: MISSING\7\n
|10: FATAL ERROR\7\n
|11: WARNING\n
|12: OVERFLOW, increase Dim_ev (in enva.h)\7\n
|13: OVERFLOW, increase Dim_mac (in enva.h)\7\n
|14: INCOHERENT\7\n
|15: TRONCADET DATAS\n
text cut at pri characters (option pri=)\7\n
|16: MALLOC ERROR\7\n
|17: arc r,a,da,n\7\n
|18: reallocation\n
|19: h: Help\n
|20: *** bottom ***\n
|21: *** top ***\n
|22: EMPTY\7\n
|23: a: add\n
b: bottom\n
c: change\n
d: delete\n
f: find\n
h: help\n
i: insert\n
l: list\n
n: next\n
p: previous\n
q: quit\n
s: save\n
t: top\n
|24: functione\n
|25: octets\n
|26: modified buffer, exit (0,1) ? \7\n
|27: ENABLE TO PROCESS\n
|28: NOT FOUND\7\n
|29: ???\n
|30: COMPILE OFF\7\n
|31: LINK ERROR\7\n
|32: OPERATOR ERROR\7\n
|33: for(ini;cond;inc) { ... }\7\n
|34: BLOCK ERROR {}\7\n
|35: NOT INITIALIZED VARIABLE\7\n
|36: READ ERROR\7\n
|37: WRITE ERROR\7\n
|38: EXISTS, WRITE (0,1) ?\7\n
|39: ???
|40: ???
|41: NON DEFINED FUNCTION\7\n
|42: sysinfo
|43: DIRECTIVE ERROR\7\n
|44: FUNCTION(liste)\7\n
|45: if(cond) {bloc} or if(cond) {bloc1} else {bloc2}\7\n
|46: ILLEGAL SPACE\7\n
|47: while(condition) { ... }\7\n
|48: =
|49: SQUARE ROOT < 0\7\n
|50: LINK OFF\7\n
|51: HOOK ERROR []\7\n
|52: ???
|53: ???
|54: time out\7\n
|55: NO LABEL FOUND\7\n
|56: DIVISION BY ZERO\7\n
|57: ILLEGAL BREAK\7\n
|58: switch(expression) { case 0: ... case(expr): ... default: ...}\7\n
|59: case constante: ou case(expr):\7\n
|60: ILLEGAL NAME\7\n
|61: ILLEGAL INDEX\7\n
|62: FUNCTION(expression)\7\n
|63: MULTIPLE DEFINITION\7\n
|64: ERROR COMMENT\7\n
|65: UNKNOWN\7\n
|66: ILLEGAL\7\n
|67: DISK FULL\7\n
|68: UNKNOWN DIRECTIVE\7\n
|69: log < 0\7\n
|70: FUNCTIONS HAVE NOT BEEN SAVED (0,1) ?\7
|71: CONTINUE (no:0, yes:1, command:2) ?\7\n
|72: CONTINUE\7\n
|73: INFINITE RECURSION\7\n
|74: BRACKET ERROR {}\7\n
|75: SYNTAX ERROR\7\n
|76: lire ... "name"\7\n
|77: gare ... "name"\7\n
|78: ENTER (q: quitte)
|79: DEBUG>
|80: compile("name")\7\n
|81: ERROR\7\n
|82: COMMAND\7\n
|83: INCOMPLETE STRING\7\n
|84: var("nom")\7\n
|85: dup func("name")\7\n
|86: (?)
|87: var fonc "name"\7\n
|88: IS A VARIABLE\7\n
|89: IS A COMMAND\7\n
|90: exit (0,1) ?\7\n
|91: IMPOSSIBLE\7\n
|92: format("<descriptif>string")
|93: STOP "name" or STOP "name",num\7\n
|94: ERROR OF CONDITION EVALUATION\7\n
|95: for(i=depart,arrivee,pas) { ... }\7\n
|96: [a,b] ou [a,b,c]\7\n
|97: commande(liste de parametres)\7\n
|98: INCOMPATIBLE TYPES\7\n
|99: FUNCTION NOT DEFINED\7\n
|100: ERROR FORMAL VARIABLE\7\n
|101: ???
|102: shared memory
|103: BADLY FORMATED FILE\7\n
|104: NOT IMPLEMENTED\7\n
|105: ???
|106: SOUND OFF\7\n
|107: \nCOMPILATION ERROR\7\n
|108: \nEXECUTION ERROR\7\n
|109: NO MESSAGES\7\n
|110: TOO MANY FUNCTION CALLS\7\n
|111: HELP\n
|112: line
|113: \nLINK ERROR\7\n
|114: UNSTACK ERROR\7\n
|115: END
|116: HTML CODE NOT DEFINED\7\n
|117: ERROR HTML CODE: \7\n
|118: TOO_MANY
)TXT";

const char* const MES_TEXT_1 = R"TXT(|0: HELP PALETTE\n
left button: choose a colour\n
middle button: validate\n
right button: menu\n
hue, saturation, value: drag the cursor\n
|1: right click\n
|2: drag the image\n
|3: draw a line\n
|4: ARE YOU SURE ?\n
|5: help (H)\n
|6: interpreter (?)\n
undo (U)\n
red green blue (R G B)\n
hue saturation value (T S V)\n
end (Escape)\n
|7: ???\n
|8: ???\n
|9: ???\n
|10: ???\n
|11: ???\n
|12: ???\n
|13: ???\n
|15: not implemented texture\7\n
|16: is not a grid\7\n
|17: incoherent\7\n
|18: do end \7\n
|19: Restart\7\n
|20: do validate palette\7\n
|21: Stack vol\7\n
|22: The intrepreter waiting in the window orvela (Alt Tab)\n
|23: keyboard\n
|24: ???\n
|25: ???\n
|26: ???\n
|27: already exists\7\n
|28: ???\n
|29: incorectly formatted file\7\n
|30: over(d) poi(num) vol(id)\7\n
|31: window number illegal\7\n
|32: ???\n
|33: ???\n
|34: Too many menus stacked\7\n
|35: Menus loop\n
|36: Too many submenus\7\n
|37: opening zero\7\n
|38: number of images=
|39: hole fac(num) vol num\n
|40: name\n
|41: ???
|42: generate facet(num1,num2) vol(id)\7\n
|43: contains no hole\7\n
|44: light incorrectly formatted\7\n
|45: Right button: menu\n
Left button: designate\n
Middle button: end\n
|46: Right button: menu\nEscape: Fin\7\n
|47: image
|48: Volumes have not been saved, leave (0,1) ?\7
|49: Trajectorieses have not been saved, leave (0,1) ?\7
|50: Kinematics have not been saved, leave (0,1) ?\7
|51: ???
|52: ???
|53: ???
|54: hue
|55: saturation
|56: value
|57: red
|58: green
|59: blue
|60: ill
|61: ref
|62: spe
|63: bri
|64: tran
|65: Middel button: end\n
Left button: move\n
Right button: menu\n
|66: incorrectly formatted view\7\n
|67: does not have the same number of vertices\7\n
|68: not enough vertices\7\n
|69: not enough points\7\n
|70: prism(x,y,z,...) numero n\7\n
|71: Graphic off\7\n
|72: Occuped device\7\n
|73: too many voisins\7\n
|74: erreur coulisse\7\n
|75: ???\n
|76: triangulate vol(num)\7\n
|77: add number inc\7\n
|78: move error\7\n
|79: play(im1,im2,ni)\7\n
|80: RC: suite\n
Space: pause\n
+: faster\n
-: slower\n
0: first image\n
Escape: end\n
|81: has no axis\7\n
|82: has no speed\7\n
|83: ???
|84: not connected\n
|85: generate vol(id) number(num2)\7\n
|86: ini camera(ad1,ad2,nb)\7\n
|87: play camera(ad1,ad2,cas)\7\n
|87: envelope error\7\n
|89: split vertex(n1,n2,...) vol(id)\7\n
|90: graphic on\n
|91: Bitmap on\n
|92: image memory on\n
|93: image post processed\n
|94: ???\n
???\n
|95: inheritence enveloppe vol n1=n2\7\n
|96: graphic off\n
|97: bitmap off\n
|98: image memory off\n
|99: ???
|100: ???
|101: anchorage error\7\n
|102: does not have masse\7\n
|103: exec anc(t) rot[xyz](a1,a2) vol(id1,id2)\7\n
|104: does not have dynamic\7\n
|105: ???
|106: PRESS THE MIDDLE BUTTON TO CONTINUE
|107: INTERACTIVE MODE
|108: ???
|109: ???
|110: SEE
|111: DEPXY: DESIGNATE AN OBJECT
|112: DEPZ: DESIGNATE AN OBJECT
|113: ROTX: DESIGNATE AN OBJECT
|114: ROTY: DESIGNATE AN OBJECT
|115: ROTZ: DESIGNATE AN OBJECT
|116: PULL: DESIGNATE A VERTEX
|117: OUTIL: DESIGNATE AN OBJECT
|118: RADIUS
|119: COEFFICIENT
|120: RIGHT BUTTON: MENUS
|121: LEFT CLICK
|122: ANGLE
|123: DESIGNATE AN OBJECT
|124: HOM: DESIGNATE AN OBJECT
|125: DILX: DESIGNATE AN OBJECT
|126: DILY: DESIGNATE AN OBJECT
|127: DILZ: DESIGNATE AN OBJECT
|128: BOX: DESIGNATE VOLUMES, A BOX THEN PUIS MIDDLE BUTTON
|129: ENTRY
|130: ???
|131: SQUELETTON: DESIGNATE A VARIABLE THEN A VOLUME
|132: CHANGE THE VARIABLE THEN MIDDLE  BOTTON
|133: ???
|134: DESIGNATE A VARIABLE
|135: MUST BE IN THIS ORDER FOR PRUVEISTI LOGIN\7\n
|136: DESIGNATE A VOLUME
|137: ZOOM
|138: DESIGNATE A VERTEX
)TXT";

#pragma once

#include <QStringList>

/// The words of the sample crib. Several words in one text are parted by ", ". No maker or person
/// of these names is meant.
namespace SampleWords {

inline QStringList words(const char *text) { return QString::fromUtf8(text).split(", "); }

/// How a group of tools is measured: the marks that sizes lie between, as the user reads them.
struct Sizes {
    const char *pattern;
    const char *marks;
    /// Finest step of a tool's own size, in tenths; 0 when a tool covers its whole range.
    int step;
};

/// A kind of tool in the singular and the forms it comes in.
struct Family {
    const char *name;
    const char *forms;
};

struct Group {
    const char *name;
    const char *grades;
    Sizes sizes;
    /// Usual price of a tool, in cents.
    int price;
    Family families[8];
};

inline constexpr Group groups[] = {
    {.name = "Cutting Tools",
     .grades = "HSS, Cobalt, Carbide, TiN-coated, TiAlN-coated",
     .sizes = {.pattern = "%1 mm", .marks = "1, 2, 3, 4, 6, 8, 10, 12, 16, 20, 25, 32, 40", .step = 1},
     .price = 2400,
     .families = {{"Drill", "Jobber, Stub, Long-series, Taper-shank, Spotting, Core"},
                  {"Insert", "Turning, Milling, Grooving, Parting, Profiling"},
                  {"End Mill", "Square-end, Ball-nose, Roughing, Corner-radius, Long-reach, Micro"},
                  {"Reamer", "Hand, Machine, Taper-pin, Adjustable, Shell"},
                  {"Countersink", "Three-flute, Single-flute, Deburring, Back, Piloted"},
                  {"Boring Bar", "Solid, Indexable, Micro-adjust, Damped, Back-facing"},
                  {"Slitting Saw", "Plain, Side-chip, Staggered-tooth, Screw-slotting, Coarse"},
                  {"Broach", "Keyway, Round, Square, Hexagon, Spline"}}},
    {.name = "Threading Tools",
     .grades = "HSS, Cobalt, Carbide, TiN-coated, Nitrided",
     .sizes = {.pattern = "M%1", .marks = "2, 3, 4, 5, 6, 8, 10, 12, 14, 16, 20, 24", .step = 10},
     .price = 3100,
     .families = {{"Tap", "Hand, Spiral-point, Spiral-flute, Forming, Pipe"},
                  {"Die", "Split, Hexagon, Rethreading, Acorn, Left-hand"},
                  {"Thread Mill", "Single-form, Multi-form, Indexable, Drilling, Chamfering"},
                  {"Thread Chaser", "Tangential, Radial, Circular, Internal, External"},
                  {"Tap Wrench", "Straight, T-handle, Ratchet, Long, Reversible"},
                  {"Die Stock", "Plain, Guided, Ratchet-head, Two-handed, Short"},
                  {"Thread Roll", "Axial, Tangential-head, Two-die, Knurling, Flat"},
                  {"Thread Repair Kit", "Coil, Solid-bush, Spark-plug, Wheel-bolt, Workshop"}}},
    {.name = "Measuring Tools",
     .grades = "Workshop, Inspection, Calibrated, Reference, Waterproof",
     .sizes = {.pattern = "%1 mm", .marks = "0, 25, 50, 75, 100, 150, 200, 300, 500, 750, 1000", .step = 0},
     .price = 14500,
     .families = {{"Micrometer", "Outside, Inside, Depth, Blade, Disc, Thread"},
                  {"Caliper", "Sliding, Dial-face, Digital, Inside-groove, Tube, Brake-disc"},
                  {"Height Gauge", "Single-column, Double-column, Scribing, Motor-driven, Bench"},
                  {"Bore Gauge", "Two-point, Three-point, Split-ball, Telescopic, Pistol-grip"},
                  {"Plug Gauge", "Plain, Threaded, Tapered, Spherical, Double-end"},
                  {"Dial Indicator", "Plunger, Lever, Back-plunger, Long-travel, Shockproof"},
                  {"Gauge Block Set", "Steel, Ceramic, Tungsten, Long, Angle"},
                  {"Square", "Engineer, Cylinder, Combination, Bevel-edge, Flange"}}},
    {.name = "Hand Tools",
     .grades = "Chrome-vanadium, Insulated, Titanium, Non-sparking, Slimline",
     .sizes = {.pattern = "%1 mm", .marks = "4, 6, 8, 10, 13, 16, 18, 20, 22, 24, 27, 30", .step = 10},
     .price = 1700,
     .families = {{"Wrench", "Combination, Open-end, Ring, Adjustable, Hook, Stubby"},
                  {"Screwdriver", "Slotted, Crosshead, Star-key, Offset, Precision, Impact-proof"},
                  {"Plier", "Flat-nose, Round-nose, Water-pump, Circlip, Locking"},
                  {"Hammer", "Ball-peen, Cross-peen, Soft-face, Dead-blow, Sledge"},
                  {"Socket", "Six-point, Twelve-point, Deep, Impact, Universal"},
                  {"Hex Key", "L-shaped, T-grip, Ball-end, Folding, Long-arm"},
                  {"Punch", "Centre, Pin, Drift, Hollow, Automatic"},
                  {"File", "Flat, Half-round, Triangular, Needle, Rotary"}}},
    {.name = "Power Tools",
     .grades = "18 V, 36 V, 230 V, 400 V, Brushless",
     .sizes = {.pattern = "%1 W", .marks = "200, 300, 400, 600, 800, 1000, 1200, 1500, 1800, 2200, 3000", .step = 0},
     .price = 21500,
     .families = {{"Power Drill", "Pistol-grip, Right-angle, Magnetic-base, Hammer-action, Bench"},
                  {"Angle Grinder", "Slide-switch, Paddle-switch, Flat-head, Variable-speed, Two-hand"},
                  {"Impact Driver", "Compact, High-torque, Square-drive, Hexagon-drive, Pulse"},
                  {"Sander", "Orbital, Belt-type, Delta, Drum, Straight-line"},
                  {"Nibbler", "Sheet-metal, Profile, Slot, Trapezoid, Corner"},
                  {"Metal Saw", "Reciprocating, Circular, Band-type, Jig, Chop"},
                  {"Die Grinder", "Straight, Long-neck, Angled, Pencil, Turbine"},
                  {"Heat Gun", "Two-stage, Thermostat, Shrink-sleeve, Soldering, Long-nozzle"}}},
    {.name = "Workholding",
     .grades = "Cast-iron, Hardened, Aluminium, Stainless, Modular",
     .sizes = {.pattern = "%1 mm", .marks = "16, 20, 25, 32, 40, 50, 63, 80, 100, 125, 160, 200", .step = 0},
     .price = 18900,
     .families = {{"Vise", "Machine, Bench-top, Tilting, Toolmaker, Self-centring"},
                  {"Clamp", "Toggle, Step, Strap, Swivel, Edge"},
                  {"Chuck", "Three-jaw, Four-jaw, Collet-type, Keyless, Magnetic"},
                  {"Collet", "Spring, Round-bore, Square-bore, Expanding, Sealed"},
                  {"Tool Holder", "Side-lock, Shrink-fit, Hydraulic, Face-mill, Flat-drive"},
                  {"Angle Plate", "Open-end, Webbed, Slotted-face, Box-type, Adjustable-angle"},
                  {"Parallel Set", "Thin, Wide, Wavy, Adjustable-width, Ground"},
                  {"V-Block", "Matched-pair, Clamping, Notched, Roller, Small"}}},
    {.name = "Abrasives",
     .grades = "Aluminium-oxide, Silicon-carbide, Zirconia, Diamond, Boron-nitride",
     .sizes = {.pattern = "Grit %1", .marks = "24, 36, 46, 60, 80, 100, 120, 150, 180, 220, 320, 400", .step = 0},
     .price = 900,
     .families = {{"Grinding Wheel", "Straight-sided, Cup, Dish, Recessed, Segmental"},
                  {"Flap Disc", "Conical, Flat-backed, Curved-edge, Extra-thick, Trimmable"},
                  {"Cut-off Disc", "Depressed-centre, Flat-centre, Thin, Steel-cutting, Fibre-backed"},
                  {"Abrasive Belt", "Narrow, Wide-face, File-type, Backstand, Flexible-back"},
                  {"Hone", "Flexible, Two-leg, Three-leg, Brush-type, Bench-stone"},
                  {"Mounted Point", "Cylindrical, Cone, Ball, Tree, Flame"},
                  {"Sanding Sheet", "Cloth-backed, Paper-backed, Hook-backed, Film, Mesh"},
                  {"Polishing Stick", "Square-section, Round-section, Triangular-section, Half-moon, Knife-edge"}}},
    {.name = "Welding",
     .grades = "Standard, Heavy-duty, Lightweight, Water-cooled, Insulated",
     .sizes = {.pattern = "%1 A", .marks = "60, 100, 150, 200, 250, 300, 350, 400, 450, 500, 600", .step = 0},
     .price = 11200,
     .families = {{"Welding Torch", "Straight-neck, Curved-neck, Flexible-neck, Push-pull, Spool-gun"},
                  {"Electrode Holder", "Twist-grip, Screw-grip, Jaw-grip, Offset-head, Insulated-head"},
                  {"Cutting Torch", "Plasma, Oxy-fuel, Long-lance, Gouging, Machine-mount"},
                  {"Power Source", "Inverter, Transformer, Multi-process, Engine-driven, Pulsed"},
                  {"Earth Clamp", "Spring-loaded, Screw-down, Rotating, Magnet-held, C-shaped"},
                  {"Wire Feeder", "Two-roll, Four-roll, Suitcase, Boom-mounted, Cold-wire"},
                  {"Cable Connector", "Male, Female, Panel, Angled, Through-wall"},
                  {"Spot Welder", "C-arm, X-arm, Single-sided, Stud, Pedestal"}}},
    {.name = "Lifting and Moving",
     .grades = "Standard, Galvanised, Stainless, Heavy-duty, Certified",
     .sizes = {.pattern = "%1 kg", .marks = "100, 250, 500, 750, 1000, 1500, 2000, 3000, 4000, 5000, 8000", .step = 0},
     .price = 16500,
     .families = {{"Hoist", "Hand-chain, Lever, Electric-chain, Wire-rope, Air-driven"},
                  {"Sling", "Webbing, Round, Chain, Wire, Basket"},
                  {"Shackle", "Bow, Dee, Wide-jaw, Safety-pin, Long-dee"},
                  {"Eye Bolt", "Collared, Rotating-ring, Long-shank, Side-load, Weld-on"},
                  {"Jack", "Bottle, Toe, Trolley-type, Screw-type, Low-profile"},
                  {"Pallet Truck", "Hand-pumped, Weighing, High-lift, Narrow-fork, Battery"},
                  {"Lifting Magnet", "Permanent, Electro, Round-bar, Sheet, Hand-lever"},
                  {"Beam Trolley", "Push-travel, Geared, Motorised, Lockable, Curve-going"}}},
    {.name = "Assembly Tools",
     .grades = "Standard, Calibrated, Long-life, Compact, Heavy-duty",
     .sizes = {.pattern = "%1 mm", .marks = "3, 4, 5, 6, 8, 10, 12, 16, 20, 25, 30, 40", .step = 10},
     .price = 9800,
     .families = {{"Torque Wrench", "Click-type, Dial-type, Slipping, Preset, Ring-head"},
                  {"Riveter", "Lazy-tongs, Lever-type, Two-handed, Nut-setting, Battery-fed"},
                  {"Crimper", "Ratchet-type, Ferrule, Hydraulic-head, Coaxial, Bench-mounted"},
                  {"Puller", "Two-arm, Three-arm, Separator, Slide-hammer, Inner-bearing"},
                  {"Bearing Heater", "Induction, Hot-plate, Cone-type, Portable, Ring-type"},
                  {"Arbor Press", "Single-ratio, Compound, Bench-frame, Pneumatic-ram, Toggle-type"},
                  {"Stud Setter", "Roller-type, Cam-type, Collet-grip, Quick-release, Extracting"},
                  {"Screw Feeder", "Rail-type, Rotary-drum, Blow-feed, Hand-fed, Counting"}}},
};

/// Places from the building down; the numbers of a cabinet, drawer or bin are added to it.
inline constexpr auto buildings = "Main Hall, North Hall, Assembly Hall, Toolmaking, Yard Store";
inline constexpr auto rooms = "Tool Room, Machine Bay, Repair Shop, Inspection";
inline constexpr int cabinetsInRoom = 8;
inline constexpr int drawersInCabinet = 6;
inline constexpr int binsInDrawer = 6;

inline constexpr auto makers =
    "Ashgrove Cutting, Belmere, Corvane, Dunmere Tool, Elmhurst & Daughters, Fernhold, Grayling Gauge, Hartwick & "
    "Lowe, Ivelstone, Juniper Works, Kettleby Bros., Lindwold, Mossbank, Nethercote, Oakrill, Pellwood Precision, "
    "Quenby, Rowantree, Saltmarsh Steel, Tamsford, Underhay, Vellacott, Wrenfield, Yarrowby";

inline constexpr auto lastNames =
    "Abbott, Bäcker, Barnes, Brontë, Carter, Côté, D'Angelo, Dalton, Dvořák, Ellis, Fischer, Foster, García, Gibson, "
    "Grün, Harper, Hölzl, Ingram, Jäger, Jennings, Keller, Köhler, Lawson, Lindqvist, Mercer, Müller, Nolan, Novak, "
    "O'Brien, O'Neil, Ødegård, Osborne, Parker, Pérez, Quinn, Reyes, Sawyer, Schröder, Silva, Strauß, Tanaka, "
    "Turner, Underhill, Vance, Walker, Weiß, Yates, Yıldız, Zimmer, Zoltán";

inline constexpr auto firstNames =
    "Alan, André, Beth, Björn, Carl, Chloë, Dana, Eric, Faye, Fatma, Glen, Hana, Inès, Ivan, Joan, Jürgen, Kyle, "
    "Käthe, Lena, Mark, Marta, Nora, Owen, Paula, Ray, René, Sara, Sören, Tom, Uma, Vic, Wendy, Yuri, Zoë";

/// Operations that are charged as overhead, and those that make parts.
inline constexpr auto overheads =
    "Machine maintenance, Housekeeping, Training, Calibration, Fixture building, Tool grinding, Material handling, "
    "Building repair, Safety round, First article inspection, Programming, Prototype work, Stock taking, Crane "
    "inspection, Waste handling, Coolant service, Gauge making, Apprentice workshop, Forklift service, Air system, "
    "Electrical repair, Machine moving, Tool trials, Sample making, Customer visit, Fire drill, Yard work, Packaging "
    "trials, Process studies, Welding tests";
inline constexpr auto machining =
    "Turning, Milling, Drilling, Surface grinding, Cylindrical grinding, Honing, Broaching, Sawing, Plasma cutting, "
    "Bending, Punching, Deburring, Welding, Brazing, Heat treatment, Sand blasting, Painting, Plating, Assembly, "
    "Balancing, Pressure test, Final inspection, Marking, Packing, Lapping, Thread rolling, Gear cutting, Spark "
    "erosion, Wire erosion, Straightening";

inline constexpr auto scrapReasons =
    "Worn out, Broken in use, Lost, Out of tolerance, Chipped edge, Collision, Overheated, Rusted, Obsolete, Failed "
    "calibration, Ground down to the limit, Damaged in transport";

inline constexpr auto scrapNotes =
    "Found broken at the machine, No regrinding possible, Handle missing, Not returned after the shift, Replaced by a "
    "new one, Cracked at the shank, Fell from the bench, Recalled by the maker, Second one this month";

}

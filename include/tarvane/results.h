/*
** results.h - what a calculation found, as data. Part of tarvane.h, which describes the calling convention.
*/
#ifndef TARVANE_RESULTS_H
#define TARVANE_RESULTS_H

#include "convention.h"
#include "openings.h"

#ifdef __cplusplus
extern "C" {
#endif

/* How a FLANGE_CALC ended. */
enum {
    TARVANE_NOT_CALCULATED = 0, /* none since RESET_ENGINE */
    TARVANE_CALCULATED = 1,
    TARVANE_REFUSED = 2,         /* the input check found fatal errors */
    TARVANE_DESIGN_GAVE_UP = 3,  /* no geometry after 20 rounds */
    TARVANE_BOLT_AREA_SHORT = 4, /* Ab is below Am, and there was a thickness to find */
    TARVANE_STOPPED = 5          /* the run was to end, with fatal_code */
};

/* Where a modulus of elasticity came from. */
enum {
    TARVANE_MODULUS_OF_TABLE = 0,
    TARVANE_MODULUS_OF_CHART = 2,     /* external pressure chart of SET_CHART */
    TARVANE_MODULUS_BEYOND_CHART = 3, /* the same, above its highest temperature */
    TARVANE_MODULUS_CARBON_STEEL = 4, /* reference 1 was used instead */
    TARVANE_NO_MODULUS = 5            /* it is 0.0 */
};

/* Places of the stress tables, and their two rows. */
enum {
    TARVANE_HUB_STRESS = 0, /* longitudinal */
    TARVANE_RADIAL_STRESS = 1,
    TARVANE_TANGENTIAL_STRESS = 2,
    TARVANE_AVERAGE_STRESS = 3,
    TARVANE_BOLT_STRESS = 4,
    TARVANE_REVERSE_STRESS = 5,  /* at the bore of a reverse flange */
    TARVANE_FULL_FACE_STRESS = 6 /* radial, at the bolt circle, full face gaskets */
};
#define TARVANE_STRESS_PLACES 7
enum { TARVANE_OPERATING = 0, TARVANE_SEATING = 1 };

/* What limits a pressure of a flange. A stress: its place plus TARVANE_BY_OPERATING_STRESS or
   TARVANE_BY_SEATING_STRESS. */
enum {
    TARVANE_HELD_BY_NOTHING = 0,
    TARVANE_BY_OPERATING_STRESS = 1, /* 1 to 7 */
    TARVANE_BY_SEATING_STRESS = 11,  /* 11 to 17 */
    TARVANE_BY_RIGIDITY = 20,        /* the index reaches 1 */
    TARVANE_BY_BOLTS = 21,           /* the bolts of a cover are used up */
    TARVANE_BY_HUB = 22,             /* the small end of the hub as a cylinder */
    TARVANE_BY_DEFLECTION = 23       /* of a TEMA channel cover */
};

/* What ends the failure corrosion loop. */
enum {
    TARVANE_FAILURE_BY_NOTHING = 0, /* not run, or no limit found */
    TARVANE_FAILURE_BY_OPERATING = 1,
    TARVANE_FAILURE_BY_SEATING = 2,
    TARVANE_FAILURE_BY_HUB = 3,
    TARVANE_FAILURE_BY_RIGIDITY = 4,
    TARVANE_FAILED_ALREADY = 5
};

#define TARVANE_MOST_MESSAGES 50

/*
** GETFLANGERESULTS - address of what the latest FLANGE_CALC found: values of the stages of its final pass,
** not of a printed text. It is filled alike with the report on and off, and filling it changes no other
** result, gate or state. All zeros but for version and bytes at load and after RESET_ENGINE; reset
** at each entry.
**
** Lengths in., areas sq in., loads lb, moments in-lb, pressures, stresses and moduli psi, temperatures F,
** weights lb. TARVANE_NO_VALUE: the stage did not run in the final pass. Index [0] is the operating
** condition, [1] gasket seating. Symbols are those of the report.
**
** Notes:
**   1) The final pass is the one that the report shows. Under kinds 2 and 3 it is at the thickness that
**      was found: t_used, not t_given.
**   2) status TARVANE_BOLT_AREA_SHORT without a final pass: Am and Ab are there, the rest is not.
**   3) J_given and J_required are those of the step after the report, which goes by SET_MODULE_CODE. A
**      report to a file unit looks the moduli up again; otherwise those of the final pass are used, and the
**      indices are TARVANE_NO_VALUE when argument and module code select different tables.
**   4) The block grows at its end only: `bytes` says how far it reaches.
*/
typedef struct {
    int32_t version, bytes; /* TARVANE_FLANGE_RESULTS_VERSION; length of the block */
    int32_t serial;         /* calculations since RESET_ENGINE */
    int32_t status;         /* TARVANE_CALCULATED and its companions */
    int32_t fatal_code; /* of TARVANE_STOPPED: 25 outside diameter not above the corroded bore */

    /* Rules */
    int32_t code;           /* argument 13 */
    int32_t module_code;    /* SET_MODULE_CODE: a switch of its own */
    int32_t new_div2_rules; /* 1: rules and labels of VIII-2 4.16 */
    int32_t a98;            /* 1: VIII-1, 1998 edition, A-98 addenda */
    int32_t old_div2;       /* 1: the older Division 2 */
    int32_t type, kind;     /* as given */
    int32_t external;       /* 1: external pressure */
    int32_t full_face;      /* 1: the gasket reaches beyond the bolt circle */
    int32_t loose_reverse;  /* 1: type 9, analysed as a ring */
    int32_t non_circular;   /* 1: cover with two spans */
    int32_t rigidity;       /* 1: the rigidity index counts */

    /* Rounds of the final pass */
    int32_t evaluations;      /* through the procedure */
    int32_t design_rounds;    /* selections of the geometry, kind 3 */
    int32_t thickness_rounds; /* of the search, kinds 2 and 3; 0 no search */
    int32_t converged;        /* 0: 200 rounds used up; -1: given up below 1/8 in. */
    int32_t modulus_status;   /* TARVANE_MODULUS_OF_TABLE and so on: the worse of 70 F and T */

    /* Messages of the input check; their texts are those of the report */
    int32_t messages;
    int32_t message[TARVANE_MOST_MESSAGES]; /* numbers in their order; 40 counts the fatal ones */
    float message_value[TARVANE_MOST_MESSAGES]; /* in the units of the report; 42: h/(g1 - go) */

    /* Given, as the final pass takes it */
    float P, Peq, T;     /* Peq: with external loads as pressure, NC-3658.1, VIII-2 4.1.11 */
    float t_given;       /* record element 8 */
    float t_used;        /* of the stresses */
    float ci, ce, ct;    /* allowances; ct comes off the thickness */
    float E_cold, E_hot; /* moduli at 70 F and at T */
    float kf;            /* k, divisor of the flange's limits, PD 5500 3.8.3.4, EN 13445 11.5.4.2 */

    /* Gasket, Table 2-5.2, EN 13445 11.5.2; full face by Taylor Forge bulletin 502, EN 13445 11.6 */
    float N, bo, b, G; /* contact width, basic width, effective width, reaction diameter */
    float b2, bPrime;  /* 2b", b' of full face gaskets, PD 5500 and EN 13445 */
    float bPart;       /* effective width of the partition gasket; 0.0 none */
    float N_min;       /* least contact width by the bolts (Brownell Young) */

    /* Loads, 2-5, 4.16.6 */
    float H, Hd, Ht, Hp, HpPrime, HGY, HG;
    float Wm1, Wm2, W; /* operating, seating, design for seating; with those of a mating flange */
    float Am1, Am2, Am, Ab; /* required for operation, for seating; the larger; actual */
    float Wext;             /* external loads on the bolts, VIII-2 4.16 */

    /* Arms, moments: 2-6, 4.16.7. Before the split multiplier but for Mop and Matm */
    float hd, ht, hg, hgPrime, hgDouble;
    float Md, Mt, Mg, Mr, Moe, Mop, Matm;

    /* Bolting */
    float bolt_spacing;                       /* actual, along the chord */
    float bolt_spacing_min, bolt_spacing_max; /* of the thread series; eq. (3) of Appendix 2 */
    float radial, radial_min;                 /* hub to bolts; types below 7 */
    float edge, edge_min;                     /* bolts to edge */
    float CF;                                 /* correction of the moments, Bsc or cF */

    /* Shape factors: Figures 2-7.1 to 2-7.6, Tables 4.16.4, 4.16.5; T, U, Y, of a reverse flange Tr, Ur */
    float K, T_factor, U, Y, Z, Yr, Alphar;  /* Yr, Alphar: reverse flange, 2-13 */
    float F, V, f, e, d, ho, hRatio, gRatio; /* of a loose flange FL, VL */
    float alpha, beta, gamma, delta, lambda;
    float I, Ip; /* inertias that share the external moment, Table 4.16.7 */

    /* Stresses, 2-7, 2-8, 2-13, 4.16.8, UG-34, EN 13445 10.5 and 11.5; ratio: allowed over actual, 999.0
       at actual 0.0. exceeded 1: above its limit by more than the tolerance of the overstress warning,
       0.25 psi, under external pressure none; counted for every place, with the warning on or off */
    float stress[2][TARVANE_STRESS_PLACES], allowed[2][TARVANE_STRESS_PLACES],
        ratio[2][TARVANE_STRESS_PLACES];
    int32_t exceeded[2][TARVANE_STRESS_PLACES];

    /* Rigidity, 2-14, Table 4.16.10; 0.0: no index for this geometry */
    float J_given[2];    /* at t_given */
    float J_required[2]; /* at the required thickness */

    /* Covers */
    float deflection, deflection_allowed; /* TEMA RCB-9.21 */
    float t_channel;                      /* least thickness by it, without allowance */
    float C_cover, Z_cover;               /* factors C and Z of UG-34 */

    /* Hub and lap, also those that print nothing */
    float hub_required; /* small end as a cylinder, UG-27(c)(1), VIII-2 4.3.3, EN 13445 7.4.2 */
    float
        hub_mawp; /* the same as a pressure: welding neck hubs, types 1 and 8, VIII-1 and VIII-2 */
    float lap_required[2]; /* lap of a lap joint by shear */

    /* Thicknesses */
    float t_required[2]; /* of a cover at its centre, UG-34 */
    float t_edge;        /* of a cover at its gasket */
    float t_min;         /* least for a full face gasket, PD 5500, EN 13445 11.6 */
    float t_stress,
        t_rigid; /* of the search: the stresses met; the rigidity index met after them */
    float t_req, t_req_new,
        t_req_new_cold; /* as FLANGE_CALC returned them; t_req is no area here */

    /* Pressures */
    float mawp_operating, mawp_seating;         /* estimates of the final pass, 0.0: none found */
    int32_t mawp_operating_by, mawp_seating_by; /* TARVANE_BY_..., what limits them */
    float P_bolts;                              /* at which the bolts are used up */
    float mawp, map_nc;                         /* as FLANGE_CALC returned them */
    int32_t mawp_by, map_nc_by;

    /* Corrosion at failure (SET_SWITCHES) */
    float failure_ca;
    int32_t failure_by; /* TARVANE_FAILURE_BY_... */

    /* Weights at the thickness that was given to the search; kind 1: of the hub alone */
    float weight_finished, weight_forging;

    /* Attached shell, UG-27 and its like, by the vessel pressure; ratios are limited to 1.0 */
    float shell_required, shell_mawp, shell_ratio; /* ratio: vessel pressure over shell_mawp */
    float stress_ratio;   /* vessel pressure over the pressure at ambient allowables, for UCS-66 */
    float pwht_thickness; /* governing thickness for PWHT_NEEDED, which reads the material files */

    /* Openings of a cover */
    int32_t openings;     /* TARVANE_OPENINGS_APART and so on */
    float opening_factor; /* h of UG-39(e)(2), 1.0 without */
    int32_t opening_violations;
    int32_t opening_rule
        [TARVANE_OPENING_RULES]; /* TARVANE_OPENING_D1_LARGE and so on, in their order */
    float opening_found[TARVANE_OPENING_RULES]; /* the length that breaks the rule (in) */
    float opening_limit[TARVANE_OPENING_RULES]; /* and its limit (in) */
} TARVANE_FLANGE_RESULTS;
#define TARVANE_FLANGE_RESULTS_VERSION 1
TARVANE_API TARVANE_FLANGE_RESULTS* TARVANE_CALL GETFLANGERESULTS(void);

/* Where the modulus of the latest ASMEMOD came from, called by a host or within a calculation:
   TARVANE_MODULUS_OF_TABLE and its companions; 0 at load. */
TARVANE_API void TARVANE_CALL MODULUS_STATUS(int32_t* status);

#ifdef __cplusplus
}
#endif

#endif

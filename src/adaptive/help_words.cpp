// The help of the words of neural networks and genetics.
#include "adaptive/help_words.h"

#include "kernel/keywords.h"
#include "language/help_table.h"

namespace {

constexpr HelpEntry ENTRIES[] = {
    {KW_adjust, "adjust: generate genetic(id) adjust(lo,hi,start,spread) an automatic mutation rate; traj(id) .. law(id) adjust fits a law to the rows", "genetic(1) alphabet(\"01\"); generate genetic(1) particle(8,6) rand; generate genetic(1) adjust(0.0001,0.001)"},
    {KW_genetic, "genetic(id) makes a population object; generate genetic(id) particle(n,L) rand a random population of n strings; generate(g) genetic(id) g generations by its fitness function func; cut genetic(id) the crossover log", "genetic(1) alphabet(\"01\"); generate genetic(1) particle(8,6) rand"},
    {KW_network, "network(id) fac(n1,n2,..) motif(inputs) law(outputs) makes a layered network (near: recurrent, texture: a self-organising map); generate network(id) validate(passes) coe(c) learns; generate inv law(v) network(id) the pattern of an output", "network(1) fac(2,3,1) motif(0,0,0,1,1,0,1,1) law(0,1,1,0); generate network(1) validate(100)"},
    {KW_neuron, "neuron: a sub-element word, the neurons of a network: neuron(k) network(id) reads them", "network(1) fac(2,2,1); neuron(1) network(1)"},
};

}  // namespace

void install_adaptive_help() { help_register("Networks and genetics", ENTRIES); }
